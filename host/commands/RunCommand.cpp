#include "host/commands/RunCommand.hpp"

#include <csignal>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

#include "bundle/MFLog/MFLog.hpp"
#include "host/alerts/TerminalAlerts.hpp"
#include "host/alerts/TerminalPasteboard.hpp"
#include "host/bundle/BundleLoader.hpp"
#include "host/journal/Journal.hpp"
#include "host/log/ConsoleLog.hpp"
#include "host/loop/EventSource.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/surfaces/DrawnSurface.hpp"
#include "host/surfaces/X11Window.hpp"
#include "linux/camera/ImageFile.hpp"
#include "linux/camera/selection/SelectedCameras.hpp"
#include "linux/codes/ZXingCodeReader.hpp"
#include "linux/desktop/DesktopURLOpener.hpp"
#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "linux/desktop/clock/ClockMonitor.hpp"
#include "linux/desktop/session/SessionMonitor.hpp"
#include "linux/motion/ScriptedAccelerometer.hpp"
#include "linux/motion/iio/IIOAccelerometer.hpp"
#include "linux/sound/GStreamerSound.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

NSDictionary chosenOptions(const RunOptions& options, const std::vector<NSDictionary>& presets) {
  auto chosen = presets.at(static_cast<std::size_t>(options.preset - 1));
  if (options.scans) {
    chosen.setObject(*options.scans, "qr");
  }
  if (options.camera) {
    chosen.setObject(*options.camera, "cameraPosition");
  }
  return chosen;
}

/// Returns an error message, empty on success.
std::string installLinuxDrivers(const RunOptions& options) {
  std::string error;
  Drivers set;
  set.logSink = makeConsoleLog();
  set.mainQueue = MainLoop::makeMainQueue();
  set.cameras = journaled(makeSelectedCameras(options.sources, &error));
  set.codeReader = makeZXingCodeReaderDriver();
  if (!options.accelerometerScript) {
    set.accelerometer = makeIIOAccelerometer();
  } else if (error.empty()) {
    set.accelerometer = makeScriptedAccelerometer(*options.accelerometerScript, &error);
  }
  set.alerts = journaled(makeTerminalAlerts(std::cout, STDIN_FILENO));
  set.pasteboard = makeTerminalPasteboard(std::cout);
  set.urls = makeDesktopURLOpener();
  set.sound = makeGStreamerSound();
  set.device = makeLinuxDeviceIdentity(options.machine);
  installDrivers(std::move(set));
  return error;
}

/// The wallpaper on its surface, with all that ends it.
class Run {
 public:
  Run(const RunOptions& options, MainLoop& loop) : options_(options), loop_(loop) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      endings_.push_back(EventSource::onSignal(signal, [this] { loop_.quit(); }));
    }
    if (options_.runFor) {
      const auto delay = std::chrono::duration_cast<std::chrono::milliseconds>(*options_.runFor);
      endings_.push_back(EventSource::onTimeout(delay, [this] { loop_.quit(); }));
    }
  }

  /// Returns an error message, empty on success.
  std::string openSurface() {
    std::string error;
    const bool hasDisplay = g_getenv("DISPLAY") != nullptr;
    if (options_.surface == SurfaceKind::Window || (options_.surface == SurfaceKind::Auto && hasDisplay)) {
      surface_ = X11Window::open(options_.width, options_.height,
                                 {.drawn = [this] { drawn(); },
                                  .closed = [this] { loop_.quit(); },
                                  .lost = [this](const std::string& cause) { fail(cause); }},
                                 &error);
      if (surface_) {
        MFInfo("surface: an X11 window");
        return "";
      }
      if (options_.surface == SurfaceKind::Window) {
        return error;
      }
      NSLog("surface: %@", error);
    }
    MFInfo("surface: offscreen");
    surface_ = std::make_unique<DrawnSurface>(options_.width, options_.height, [this] { drawn(); });
    return "";
  }

  /// Returns the exit status.
  int show(const WallpaperClass& wallpaperClass) {
    const CGRect frame{{0, 0}, {static_cast<double>(options_.width), static_cast<double>(options_.height)}};
    auto wallpaper = wallpaperClass.initWithFrame(frame);
    if (!wallpaper) {
      fail("the wallpaper cannot be built at this size");
      return status_;
    }
    wallpaper->setWallpaperOptions(chosenOptions(options_, wallpaperClass.presetWallpaperOptions()));
    surface_->show(wallpaper->view());
    wallpaper->setAnimating(true);
    const auto session = makeSessionMonitor();
    const auto clock = makeClockMonitor();
    loop_.run();
    wallpaper->setAnimating(false);
    if (framesDrawn_ > 0) {
      writeSnapshot();
    }
    drivers().alerts->cancelAll();
    return status_;
  }

 private:
  void drawn() {
    if (++framesDrawn_ == 1) {
      writeSnapshot();
    }
    if (options_.frames && framesDrawn_ >= *options_.frames) {
      loop_.quit();
    }
  }

  void writeSnapshot() {
    if (!options_.snapshot) {
      return;
    }
    const auto& pixels = surface_->pixels();
    const auto error =
        writePNG(*options_.snapshot, pixels.data.data(), pixels.width, pixels.height, pixels.stride());
    if (error.empty()) {
      std::cout << "picture: " << options_.snapshot->string() << std::endl;
    } else {
      std::cerr << "nivlo: " << error << '\n';
      status_ = 1;
    }
  }

  void fail(const std::string& cause) {
    std::cerr << "nivlo: " << cause << '\n';
    status_ = 1;
    loop_.quit();
  }

  const RunOptions& options_;
  MainLoop& loop_;
  std::unique_ptr<DrawnSurface> surface_;
  std::vector<EventSource> endings_;
  int framesDrawn_ = 0;
  int status_ = 0;
};

}  // namespace

int runWallpaper(const RunOptions& options) {
  MainLoop loop;
  int status = 1;
  auto error = installLinuxDrivers(options);
  const auto* wallpaperClass = error.empty() ? loadWallpaperClass(options.bundle, &error) : nullptr;
  if (wallpaperClass) {
    nameProgramForJournal();
    MFNotice("started: %@, preset %d", wallpaperClass->identifier(), options.preset);
    Run run(options, loop);
    error = run.openSurface();
    status = error.empty() ? run.show(*wallpaperClass) : 1;
    MFNotice("stopped with status %d", status);
  }
  if (!error.empty()) {
    std::cerr << "nivlo: " << error << '\n';
  }
  // The wallpaper's last hand-offs to the main queue keep it alive; they must go before the drivers do.
  MainLoop::drain();
  installDrivers({});
  return status;
}

}  // namespace nivlo
