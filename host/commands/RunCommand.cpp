#include "host/commands/RunCommand.hpp"

#include <csignal>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "host/bundle/BundleLoader.hpp"
#include "host/commands/RunDrivers.hpp"
#include "host/control/ControlService.hpp"
#include "host/control/client/HandOver.hpp"
#include "host/log/ProgramLog.hpp"
#include "host/loop/EventSource.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/render/LayerRenderer.hpp"
#include "host/show/CameraActivity.hpp"
#include "host/show/WallpaperShow.hpp"
#include "host/surfaces/ChooseSurface.hpp"
#include "kit/MFLog/MFLog.hpp"
#include "linux/camera/ImageFile.hpp"
#include "linux/desktop/clock/ClockMonitor.hpp"
#include "linux/desktop/session/SessionMonitor.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

/// Shows the wallpaper on a surface until something ends it.
class Run {
 public:
  Run(const RunOptions& options, MainLoop& loop, ControlService& control)
      : options_(options), loop_(loop), control_(control) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      endings_.push_back(EventSource::onSignal(signal, [this] { loop_.quit(); }));
    }
    if (options_.runFor) {
      const auto delay = std::chrono::duration_cast<std::chrono::milliseconds>(*options_.runFor);
      endings_.push_back(EventSource::onTimeout(delay, [this] { loop_.quit(); }));
    }
  }

  /// Returns the exit status.
  int show(std::shared_ptr<const WallpaperBundle> bundle, const std::shared_ptr<CameraActivity>& cameras) {
    std::string error;
    surface_ = chooseSurface(options_.surfaceKind, options_.surface, handlers(), &error);
    if (!surface_) {
      fail(error);
      return status_;
    }
    MFInfo("surface: %@", surface_->name());
    show_ = WallpaperShow::make(std::move(bundle), options_.show, surface_->size(), cameras, &error);
    if (!show_) {
      fail(error);
      return status_;
    }
    surface_->show(show_->view());
    show_->presence().setAwaited(surface_->awaited());
    show_->presence().begin();
    const auto session =
        makeSessionMonitor([this](bool inForeground) { show_->presence().setInForeground(inForeground); });
    const auto clock = makeClockMonitor();
    cameras->onReplaced([this] { useNewCameras(); });
    control_.attach(show_.get());
    loop_.run();
    control_.attach(nullptr);
    cameras->onReplaced([] {});
    end();
    return status_;
  }

 private:
  SurfaceHandlers handlers() {
    return {.drawn = [this] { drawn(); },
            .visible = [this](bool visible) { show_->presence().setVisible(visible); },
            .awaits = [this](const std::string& what) { show_->presence().setAwaited(what); },
            .closed = [this] { loop_.quit(); },
            .lost = [this](const std::string& cause) { fail(cause); }};
  }

  /// A wallpaper chooses its camera when it is built.
  void useNewCameras() {
    if (const auto error = show_->rebuild(); !error.empty()) {
      MFWarning("the new camera is not shown: %@", error);
    }
  }

  void drawn() {
    show_->frameShown();
    if (++framesDrawn_ == 1) {
      MFInfo("first picture");
      writeSnapshot();
    }
    if (options_.frames && framesDrawn_ >= *options_.frames) {
      loop_.quit();
    }
  }

  void end() {
    if (framesDrawn_ > 0) {
      writeSnapshot();
    }
    surface_.reset();
    show_.reset();
  }

  void writeSnapshot() {
    if (!options_.snapshot) {
      return;
    }
    const auto view = show_->view();
    Pixels pixels;
    pixels.resize(static_cast<int>(view.size.width), static_cast<int>(view.size.height));
    LayerRenderer().render(view, pixels.span());
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
  ControlService& control_;
  std::unique_ptr<WallpaperShow> show_;
  std::unique_ptr<Surface> surface_;
  std::vector<EventSource> endings_;
  int framesDrawn_ = 0;
  int status_ = 0;
};

}  // namespace

RunCommand::RunCommand(CLI::App& app) : Command(app, "run", "Show the wallpaper; the default command") {
  options_.addTo(app);
  options_.addTo(arguments());
}

int RunCommand::run() const {
  const auto options = options_.options();
  MainLoop loop;
  ControlService control([&loop] { loop.quit(); });
  if (control.anotherIsRunning()) {
    return handOver(options.bundle, options.show, options.startOnly);
  }
  int status = 1;
  const auto cameras = std::make_shared<CameraActivity>();
  auto error = installDriversFor(options, cameras);
  const auto bundle = error.empty() ? openWallpaperBundle(options.bundle, &error) : nullptr;
  if (bundle) {
    error = whyImpossible(options.show, *bundle);
  }
  if (error.empty()) {
    nameProgramInLog();
    MFNotice("started: %@, preset %d", bundle->identifier(), options.show.preset.value_or(1));
    status = Run(options, loop, control).show(bundle, cameras);
    MFNotice("stopped with status %d", status);
  }
  if (!error.empty()) {
    std::cerr << "nivlo: " << error << '\n';
  }
  // Tasks that the wallpaper left on the main queue keep it alive, and it must go before the drivers do.
  MainLoop::drain();
  installDrivers({});
  return status;
}

}  // namespace nivlo
