#include "host/commands/RunCommand.hpp"

#include <csignal>
#include <iostream>
#include <memory>

#include "host/bundle/BundleLoader.hpp"
#include "host/commands/RunDrivers.hpp"
#include "host/commands/WallpaperRun.hpp"
#include "host/control/client/HandOver.hpp"
#include "host/log/ProgramLog.hpp"
#include "host/render/FramePace.hpp"
#include "host/show/ScanPermit.hpp"
#include "host/text/VisibleText.hpp"
#include "kit/MFLog/MFLog.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

RunCommand::RunCommand(CLI::App& app) : Command(app, "run", "Show the wallpaper; the default command") {
  options_.addTo(app);
  options_.addTo(arguments());
}

int RunCommand::run() const {
  // The wallpaper goes on in the background of an interactive shell, whose terminal would otherwise stop it
  // when it prints, or when it reads just as it is put there.
  std::signal(SIGTTOU, SIG_IGN);
  std::signal(SIGTTIN, SIG_IGN);
  // A log file at the limit on file sizes then fails to be written, like one on a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  const auto options = options_.options();
  MainLoop loop;
  DesktopVariant desktop;  // asked first, so that the answer is there when the first picture is drawn
  ControlService control([&loop] { loop.quit(); });
  if (control.anotherIsRunning()) {
    return handOver(options.bundle, options.show, options.startOnly);
  }
  int status = 1;
  const auto cameras = std::make_shared<CameraActivity>();
  const auto pace = std::make_shared<FramePace>(options.picturesPerSecond);
  const auto scanPermit = std::make_shared<ScanPermit>();
  auto error = installDriversFor(options, cameras, pace, scanPermit);
  const auto bundle = error.empty() ? openWallpaperBundle(options.bundle, &error) : nullptr;
  if (bundle) {
    error = whyImpossible(options.show, *bundle);
  }
  if (error.empty()) {
    nameProgramInLog();
    MFNotice("started: %@, preset %d", bundle->identifier(), options.show.preset.value_or(1));
    status = WallpaperRun(options, loop, control, desktop, cameras, pace, scanPermit).show(bundle);
    // All dialogs are closed, and a report that still waits on the main queue must not open another one.
    drivers().alerts.reset();
    MFNotice("stopped with status %d", status);
  }
  if (!error.empty()) {
    std::cerr << "nivlo: " << visibleText(error) << '\n';
  }
  // Tasks that the wallpaper left on the main queue keep it alive, and it must go before the drivers do.
  MainLoop::drain();
  installDrivers({});
  return status;
}

}  // namespace nivlo
