// A page of pictures to pick from.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <adwaita.h>

namespace nivlo {

struct PickEntry {
  std::string words;    ///< below the picture; valid UTF-8
  std::string picture;  ///< the content of its file; an icon takes its place where it cannot be decoded
};

/// The size and shape of the pictures on a page.
enum class PickPictures {
  Presets,     ///< in their own shape, in one column where the window is as narrow as a phone, else in two
  Wallpapers,  ///< upright cards of the same size, cropped to it, two or more in a row
};

/// A grid of pictures, one of which may be marked as chosen. Main thread only, with the toolkit started.
class PickPage {
 public:
  /// Calls `picked` with the number of each entry that a user picks, counted from 1.
  PickPage(const std::vector<PickEntry>& entries, PickPictures pictures, std::function<void(int)> picked);
  PickPage(const PickPage&) = delete;
  PickPage& operator=(const PickPage&) = delete;

  /// The grid, with what scrolls it. A floating reference at first; this object must outlive it.
  GtkWidget* widget() const { return scroller_; }
  /// Marks an entry, counted from 1, and no other; 0 marks none.
  void mark(int chosen);

 private:
  void add(const PickEntry& entry, PickPictures pictures);

  GtkFlowBox* grid_;
  GtkWidget* scroller_;
  std::vector<GtkWidget*> marks_;
  std::function<void(int)> picked_;
};

}  // namespace nivlo
