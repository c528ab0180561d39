// The wallpaper that is shown, and what can be asked of it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/bundle/WallpaperBundle.hpp"
#include "host/render/ViewLayout.hpp"
#include "host/show/CameraActivity.hpp"
#include "host/show/FrameStatistics.hpp"
#include "host/show/Presence.hpp"
#include "host/show/ScanPermit.hpp"
#include "host/show/ShowOptions.hpp"
#include "platform/HostContract/WallpaperClass.hpp"
#include "platform/HostContract/WallpaperOptionKeys.hpp"

namespace nivlo {

/// The state of an open camera.
enum class CameraState {
  Delivering,  ///< pictures arrive
  Waiting,     ///< none arrives: it has just been opened, or something is wrong with it
  Unplugged,   ///< none arrives until it is plugged in again
};

/// "delivering", "waiting" or "unplugged".
const char* inWords(CameraState state);

struct WallpaperStatus {
  int preset = 1;                ///< the one chosen last, counted from 1
  bool takesCamera = true;       ///< the wallpaper has a camera to choose
  std::optional<bool> scanning;  ///< nothing where the wallpaper does not read codes
  bool animating = false;
  bool visible = true;
  std::string awaited;  ///< what must be there before it can be seen; empty if nothing is missing
  bool paused = false;  ///< by the user
  BatterySaving batterySaving = BatterySaving::None;
  bool inForeground = true;          ///< the session is neither locked nor asleep nor another user's
  std::optional<CameraInfo> camera;  ///< the open one
  CameraState cameraState = CameraState::Delivering;  ///< of the open one
  bool canScan = true;     ///< false if no code could be read, whatever `scanning` says
  FrameStatistics frames;  ///< of the wallpaper that is shown now
};

/// Owns the shown wallpaper, which another one can replace, and animates it as Presence says. Main thread
/// only.
class WallpaperShow {
 public:
  /// Returns null, with a sentence for users in `*error`, when the wallpaper cannot be built for this size
  /// (in pixels) or does not understand the options. `cameras` follows the cameras that the wallpaper opens;
  /// `scanPermit` is told whether the user has scanning on.
  static std::unique_ptr<WallpaperShow> make(std::shared_ptr<const WallpaperBundle> bundle,
                                             const ShowOptions& options, CGSize size,
                                             std::shared_ptr<const CameraActivity> cameras,
                                             std::shared_ptr<ScanPermit> scanPermit, std::string* error);
  ~WallpaperShow();
  WallpaperShow(const WallpaperShow&) = delete;
  WallpaperShow& operator=(const WallpaperShow&) = delete;

  /// The view to show. It stays the same when another wallpaper replaces the shown one.
  LaidOutView view() const { return {stage_, size_}; }
  Presence& presence() { return presence_; }
  const WallpaperBundle& bundle() const { return *bundle_; }
  WallpaperStatus status() const;
  /// Calls `handler` when `status` may have changed, other than by an event of a camera or by the number of
  /// frames. It takes the place of an earlier handler.
  void onChange(std::function<void()> handler) { changed_ = std::move(handler); }
  /// Must be called when the surface has shown the view's newest picture.
  void frameShown();

  /// Applies the options. Returns why they are impossible, as a sentence for users; empty on success. Nothing
  /// has changed in the first case.
  std::string change(const ShowOptions& changes);
  /// Asks for the camera that faces the other way than the one opened last. Returns what `change` returns,
  /// also when there is no such camera or it cannot be opened.
  std::string swapCameras();
  /// Tells the wallpaper, and those that replace it, kWallpaperVariantLight (which it starts with) or
  /// kWallpaperVariantDark.
  void setVariant(long variant);
  /// Shows another wallpaper instead. The old one stops and lets go of its camera before the new one
  /// animates, and its dialogs close. Returns why that is impossible, as a sentence for users, in which case
  /// the old wallpaper stays; empty on success.
  std::string replace(std::shared_ptr<const WallpaperBundle> bundle, const ShowOptions& options);

  /// Builds the wallpaper anew with the options of now, for example because other cameras are there. Returns
  /// what `replace` returns.
  std::string rebuild();

 private:
  WallpaperShow(CGSize size, std::shared_ptr<const CameraActivity> cameras,
                std::shared_ptr<ScanPermit> scanPermit);
  void start(std::shared_ptr<const WallpaperBundle> bundle, std::shared_ptr<Wallpaper> wallpaper,
             const ShowOptions& options);
  void stop();
  void apply(const ShowOptions& changes);
  const char* cameraInUse() const;
  bool canScan() const;
  CameraState stateOf(const ObservedCamera& camera) const;

  const CGSize size_;
  const std::shared_ptr<UIView> stage_;  // holds the wallpaper's view
  const std::shared_ptr<const CameraActivity> cameras_;
  const std::shared_ptr<ScanPermit> scanPermit_;
  std::shared_ptr<const WallpaperBundle> bundle_;
  std::shared_ptr<Wallpaper> wallpaper_;
  unsigned openingsBefore_ = 0;  // cameras opened before the options were last set
  int preset_ = 1;
  NSDictionary options_;
  long variant_ = kWallpaperVariantLight;
  FrameStatistics frames_;
  bool couldScan_ = true;
  std::function<void()> changed_ = [] {};
  Presence presence_;
};

}  // namespace nivlo
