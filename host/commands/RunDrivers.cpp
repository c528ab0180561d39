#include "host/commands/RunDrivers.hpp"

#include <iostream>
#include <utility>

#include <unistd.h>

#include "host/alerts/DesktopDialogs.hpp"
#include "host/alerts/LinkReports.hpp"
#include "host/alerts/TerminalAlerts.hpp"
#include "host/alerts/TerminalPasteboard.hpp"
#include "host/log/ConsoleLog.hpp"
#include "host/log/LoggedAlerts.hpp"
#include "host/log/ProgramLog.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/power/BatteryLooks.hpp"
#include "host/power/PacedCameras.hpp"
#include "host/power/PowerSaverLooks.hpp"
#include "host/surfaces/ChooseSurface.hpp"
#include "linux/camera/selection/SelectedCameras.hpp"
#include "linux/codes/pace/ScenePace.hpp"
#include "linux/codes/process/ProcessCodeReader.hpp"
#include "linux/desktop/DesktopURLOpener.hpp"
#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "linux/motion/ScriptedAccelerometer.hpp"
#include "linux/motion/iio/IIOAccelerometer.hpp"
#include "linux/sound/GStreamerSound.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

bool asksOnDesktop(const RunOptions& options) {
  return options.alerts == AlertKind::Desktop ||
         (options.alerts == AlertKind::Auto && options.surfaceKind != SurfaceKind::Offscreen && hasDisplay());
}

}  // namespace

std::string installDriversFor(const RunOptions& options, const std::shared_ptr<CameraActivity>& cameras,
                              const std::shared_ptr<const FramePace>& pace,
                              const std::shared_ptr<ScanPermit>& scanPermit) {
  std::string error;
  Drivers set;
  set.logSink = makeConsoleLog();
  set.mainQueue = MainLoop::makeMainQueue();
  set.cameras =
      paced(observed(makeSelectedCameras(options.sources, &error, [cameras] { cameras->replaced(); }),
                     [cameras](CameraEvent event, const ObservedCamera& camera) {
                       logCameraEvent(event, camera.info);
                       cameras->follow(event, camera);
                     }),
            pace);
  // A still scene gets a quarter of the looks that saving power leaves.
  set.codeReader = ruledBy(
      scanPermit,
      pacedByScene(ruledBy(savingPower(), ruledBy(sparingTheBattery(pace), makeProcessCodeReaderDriver()))));
  if (!options.accelerometerScript) {
    set.accelerometer = makeIIOAccelerometer();
  } else if (error.empty()) {
    set.accelerometer = makeScriptedAccelerometer(*options.accelerometerScript, &error);
  }
  set.alerts = makeTerminalAlerts(std::cout, STDIN_FILENO);
  set.pasteboard = makeTerminalPasteboard(std::cout);
  if (asksOnDesktop(options)) {
    auto desktop = makeDesktopDialogs(std::move(set.alerts), std::move(set.pasteboard));
    set.alerts = std::move(desktop.alerts);
    set.pasteboard = std::move(desktop.pasteboard);
  }
  const auto links = std::make_shared<LinkReports>();
  set.alerts = LinkReports::noticingAnswers(links, withholding(scanPermit, logged(std::move(set.alerts))));
  set.urls = makeDesktopURLOpener({.refused = [links](const std::string& why) { links->refused(why); },
                                   .failed = [links](const std::string& why) { links->failed(why); }});
  set.sound = makeGStreamerSound();
  set.device = makeLinuxDeviceIdentity(options.machine);
  installDrivers(std::move(set));
  return error;
}

}  // namespace nivlo
