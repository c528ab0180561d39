// One run of the wallpaper, from its first picture to its end.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/bundle/WallpaperBundle.hpp"
#include "host/commands/RunOptions.hpp"
#include "host/control/ControlService.hpp"
#include "host/loop/EventSource.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/render/FramePace.hpp"
#include "host/show/CameraActivity.hpp"
#include "host/show/DesktopVariant.hpp"
#include "host/show/ScanPermit.hpp"
#include "host/show/WallpaperShow.hpp"
#include "host/surfaces/Surface.hpp"

namespace nivlo {

/// Shows a wallpaper on a surface until something ends it: SIGINT, SIGTERM, SIGHUP, the control interface,
/// the user who closes the window, the loss of the display, or the number of frames or the time that the
/// options allow. Main thread only.
class WallpaperRun {
 public:
  /// Arguments that are passed by reference must outlive this object.
  WallpaperRun(const RunOptions& options, MainLoop& loop, ControlService& control, DesktopVariant& desktop,
               std::shared_ptr<CameraActivity> cameras, std::shared_ptr<FramePace> pace,
               std::shared_ptr<ScanPermit> scanPermit);
  WallpaperRun(const WallpaperRun&) = delete;
  WallpaperRun& operator=(const WallpaperRun&) = delete;

  /// Runs the loop until the end; once only. Returns the exit status.
  int show(std::shared_ptr<const WallpaperBundle> bundle);

 private:
  SurfaceHandlers handlers();
  std::string begin(std::shared_ptr<const WallpaperBundle> bundle);
  void runLoop();
  void end();
  void useNewCameras();
  void spareBattery(bool onBattery);
  void drawn();
  void writeSnapshot();
  void fail(const std::string& cause);

  const RunOptions& options_;
  MainLoop& loop_;
  ControlService& control_;
  DesktopVariant& desktop_;
  const std::shared_ptr<CameraActivity> cameras_;
  const std::shared_ptr<FramePace> pace_;
  const std::shared_ptr<ScanPermit> scanPermit_;
  std::unique_ptr<WallpaperShow> show_;
  std::unique_ptr<Surface> surface_;
  std::vector<EventSource> endings_;
  int framesDrawn_ = 0;
  int status_ = 0;
};

}  // namespace nivlo
