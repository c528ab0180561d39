#include "host/commands/WallpaperRun.hpp"

#include <chrono>
#include <csignal>
#include <iostream>
#include <utility>

#include "host/render/LayerRenderer.hpp"
#include "host/surfaces/ChooseSurface.hpp"
#include "host/text/VisibleText.hpp"
#include "kit/MFLog/MFLog.hpp"
#include "linux/camera/ImageFile.hpp"
#include "linux/desktop/clock/ClockMonitor.hpp"
#include "linux/desktop/power/BatteryMonitor.hpp"
#include "linux/desktop/session/SessionMonitor.hpp"

namespace nivlo {

WallpaperRun::WallpaperRun(const RunOptions& options, MainLoop& loop, ControlService& control,
                           DesktopVariant& desktop, std::shared_ptr<CameraActivity> cameras,
                           std::shared_ptr<FramePace> pace, std::shared_ptr<ScanPermit> scanPermit)
    : options_(options),
      loop_(loop),
      control_(control),
      desktop_(desktop),
      cameras_(std::move(cameras)),
      pace_(std::move(pace)),
      scanPermit_(std::move(scanPermit)) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    endings_.push_back(EventSource::onSignal(signal, [this] { loop_.quit(); }));
  }
  if (options_.runFor) {
    const auto delay = std::chrono::duration_cast<std::chrono::milliseconds>(*options_.runFor);
    endings_.push_back(EventSource::onTimeout(delay, [this] { loop_.quit(); }));
  }
}

int WallpaperRun::show(std::shared_ptr<const WallpaperBundle> bundle) {
  if (const auto error = begin(std::move(bundle)); !error.empty()) {
    fail(error);
    return status_;
  }
  runLoop();
  end();
  return status_;
}

/// Returns an error message, empty on success.
std::string WallpaperRun::begin(std::shared_ptr<const WallpaperBundle> bundle) {
  std::string error;
  surface_ = chooseSurface(options_.surfaceKind, options_.surface, handlers(), &error);
  if (!surface_) {
    return error;
  }
  MFInfo("surface: %@", surface_->name());
  show_ =
      WallpaperShow::make(std::move(bundle), options_.show, surface_->size(), cameras_, scanPermit_, &error);
  return error;
}

void WallpaperRun::runLoop() {
  desktop_.observe([this](long variant) { show_->setVariant(variant); });
  surface_->show({show_->view().view, show_->view().size, pace_});
  show_->presence().setAwaited(surface_->awaited());
  show_->presence().begin();
  const auto session =
      makeSessionMonitor([this](bool inForeground) { show_->presence().setInForeground(inForeground); });
  const auto battery = options_.onBattery == OnBattery::Run
                           ? nullptr
                           : makeBatteryMonitor([this](bool onBattery) { spareBattery(onBattery); });
  const auto clock = makeClockMonitor();
  cameras_->onReplaced([this] { useNewCameras(); });
  cameras_->onEvent([this] { control_.statusChanged(); });
  show_->onChange([this] { control_.statusChanged(); });
  control_.attach(show_.get());
  loop_.run();
  control_.attach(nullptr);
  cameras_->onEvent([] {});
  cameras_->onReplaced([] {});
  desktop_.observe([](long) {});
}

void WallpaperRun::end() {
  if (framesDrawn_ > 0) {
    writeSnapshot();
  }
  surface_.reset();
  show_.reset();
}

SurfaceHandlers WallpaperRun::handlers() {
  return {.drawn = [this] { drawn(); },
          .visible = [this](bool visible) { show_->presence().setVisible(visible); },
          .awaits = [this](const std::string& what) { show_->presence().setAwaited(what); },
          .closed = [this] { loop_.quit(); },
          .lost = [this](const std::string& cause) { fail(cause); }};
}

/// A wallpaper chooses its camera when it is built.
void WallpaperRun::useNewCameras() {
  if (const auto error = show_->rebuild(); !error.empty()) {
    MFWarning("the new camera is not shown: %@", visibleText(error));
  }
}

void WallpaperRun::spareBattery(bool onBattery) {
  const bool pauses = options_.onBattery == OnBattery::Pause;
  MFNotice(!onBattery ? "power: plugged in again, so the wallpaper is shown as usual"
           : pauses   ? "power: on battery, so the wallpaper pauses"
                      : "power: on battery, so pictures and looks for codes are halved");
  pace_->setHalved(onBattery && !pauses);
  show_->presence().setBatterySaving(!onBattery ? BatterySaving::None
                                     : pauses   ? BatterySaving::Paused
                                                : BatterySaving::Slowed);
}

void WallpaperRun::drawn() {
  show_->frameShown();
  if (++framesDrawn_ == 1) {
    MFInfo("first picture");
    writeSnapshot();
  }
  if (options_.frames && framesDrawn_ >= *options_.frames) {
    loop_.quit();
  }
}

void WallpaperRun::writeSnapshot() {
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
    std::cerr << "nivlo: " << visibleText(error) << '\n';
    status_ = 1;
  }
}

void WallpaperRun::fail(const std::string& cause) {
  std::cerr << "nivlo: " << visibleText(cause) << '\n';
  status_ = 1;
  loop_.quit();
}

}  // namespace nivlo
