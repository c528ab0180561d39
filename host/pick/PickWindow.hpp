// The window in which a user picks a wallpaper and one of its presets.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <adwaita.h>

#include "host/pick/PickPage.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

struct PickWallpaper {
  PickEntry entry;
  std::vector<PickEntry> presets;
};

/// A preset of one of the wallpapers, both counted from 1; 0 stands for none.
struct PickedPreset {
  int wallpaper = 0;
  int preset = 0;
};

/// On the screen from construction until it is closed or destroyed. Shows the wallpapers, and for the one
/// that is picked its presets, with a way back; a single wallpaper's presets at once. Main thread only, with
/// the toolkit started.
class PickWindow {
 public:
  /// `shown` is marked at first. `choose` is called for each preset that is picked: the text that it returns
  /// is shown as an error, and the mark moves only if that is empty. `closed` is called when a user closes
  /// the window.
  PickWindow(std::vector<PickWallpaper> wallpapers, PickedPreset shown,
             std::function<std::string(PickedPreset)> choose, std::function<void()> closed);
  ~PickWindow();
  PickWindow(const PickWindow&) = delete;
  PickWindow& operator=(const PickWindow&) = delete;

 private:
  void build();
  GtkWidget* framed(const PickPage& page, const std::string& title, bool hasWayBack);
  void openWallpapers();
  void openPresets(int wallpaper);
  bool goBack();
  void pick(PickedPreset picked);
  void markShown();

  Owned<GtkWindow, g_object_unref> window_;
  AdwToastOverlay* messages_;
  AdwLeaflet* pages_;
  std::vector<PickWallpaper> all_;
  PickedPreset shown_;
  std::unique_ptr<PickPage> wallpapers_;  // null for a single wallpaper
  std::unique_ptr<PickPage> presets_;     // null until a wallpaper is picked
  int opened_ = 0;                        // the wallpaper whose presets these are, counted from 1
  GtkWidget* presetsWidget_ = nullptr;
  std::function<std::string(PickedPreset)> choose_;
  std::function<void()> closed_;
};

}  // namespace nivlo
