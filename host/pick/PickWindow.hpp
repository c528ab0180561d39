// The window in which a preset is picked.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <adwaita.h>

#include "linux/handles/Owned.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace nivlo {

struct PickEntry {
  std::string words;
  std::shared_ptr<const UIImage> picture;  ///< none is shown for null, or where it cannot be decoded
};

/// On the screen from construction until it is closed or destroyed; a column of pictures where it is narrow,
/// else two. Main thread only, with the toolkit started.
class PickWindow {
 public:
  /// Entries are counted from 1. `choose` is called for each pick; what it returns is shown as an error, and
  /// the mark moves to the picked entry only when that is empty. `closed` is called when a person closes the
  /// window.
  PickWindow(const std::vector<PickEntry>& entries, int chosen, std::function<std::string(int)> choose,
             std::function<void()> closed);
  ~PickWindow();
  PickWindow(const PickWindow&) = delete;
  PickWindow& operator=(const PickWindow&) = delete;

 private:
  void build(const std::vector<PickEntry>& entries);
  void add(const PickEntry& entry);
  void mark(int chosen);
  void pick(int picked);

  Owned<GtkWindow, g_object_unref> window_;
  AdwToastOverlay* messages_;
  GtkFlowBox* grid_;
  std::vector<GtkWidget*> marks_;
  std::function<std::string(int)> choose_;
  std::function<void()> closed_;
};

}  // namespace nivlo
