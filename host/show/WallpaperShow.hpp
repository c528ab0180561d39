// The wallpaper that is being shown, and what can be asked of it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/render/ViewLayout.hpp"
#include "host/show/CameraActivity.hpp"
#include "host/show/FrameStatistics.hpp"
#include "host/show/Presence.hpp"
#include "platform/HostContract/WallpaperClass.hpp"

namespace nivlo {

/// What a wallpaper shows: one of its presets, and what differs from it.
struct ShowOptions {
  std::optional<int> preset;          ///< counted from 1; the first one at the beginning, then what stands
  std::optional<bool> scans;          ///< overrides the preset
  std::optional<std::string> camera;  ///< "back" or "front", overrides the preset
};

struct WallpaperStatus {
  int preset = 1;  ///< chosen last
  bool scanning = false;
  bool animating = false;
  bool visible = true;
  bool paused = false;               ///< by the person
  bool inForeground = true;          ///< the session is neither locked nor asleep nor another user's
  std::optional<CameraInfo> camera;  ///< the open one
  FrameStatistics frames;
};

/// Owns the wallpaper and follows Presence. Main thread only.
class WallpaperShow {
 public:
  /// Null when the wallpaper cannot be built for this size. The preset must exist.
  static std::unique_ptr<WallpaperShow> make(const WallpaperClass& wallpaperClass, const ShowOptions& options,
                                             CGSize size, std::shared_ptr<const CameraActivity> cameras);
  ~WallpaperShow();
  WallpaperShow(const WallpaperShow&) = delete;
  WallpaperShow& operator=(const WallpaperShow&) = delete;

  LaidOutView view() const;
  Presence& presence() { return presence_; }
  WallpaperStatus status() const;
  /// The surface has just shown the view's newest picture.
  void frameShown();

  int presetCount() const { return static_cast<int>(presets_.size()); }
  /// What is absent stays as it is. The preset must exist.
  void change(const ShowOptions& changes);
  /// Asks for the camera on the other side of the one that was opened last.
  void swapCameras();

 private:
  WallpaperShow(std::vector<NSDictionary> presets, std::shared_ptr<Wallpaper> wallpaper, CGSize size,
                std::shared_ptr<const CameraActivity> cameras);
  std::string cameraInUse() const;

  std::vector<NSDictionary> presets_;
  std::shared_ptr<Wallpaper> wallpaper_;
  CGSize size_;
  std::shared_ptr<const CameraActivity> cameras_;
  unsigned openingsBefore_ = 0;  // the options were set
  int preset_ = 1;
  NSDictionary options_;
  FrameStatistics frames_;
  Presence presence_;
};

}  // namespace nivlo
