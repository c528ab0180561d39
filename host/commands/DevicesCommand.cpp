#include "host/commands/DevicesCommand.hpp"

#include <iostream>
#include <string>

#include <fmt/format.h>

#include "host/log/ConsoleLog.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/camera/selection/SelectedCameras.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

const char* inWords(AVCaptureDevicePosition position) {
  switch (position) {
    case AVCaptureDevicePosition::Back:
      return "back";
    case AVCaptureDevicePosition::Front:
      return "front";
    case AVCaptureDevicePosition::Unspecified:
      break;
  }
  return "unspecified";
}

}  // namespace

int runDevices(const DevicesOptions& options) {
  installDrivers({.logSink = makeConsoleLog()});
  std::string error;
  const auto cameras = makeSelectedCameras(options.sources, &error);
  if (!cameras) {
    std::cerr << "nivlo: " << error << '\n';
    return 1;
  }
  const auto found = cameras->cameras();
  if (found.empty()) {
    std::cout << "no cameras\n";
  }
  for (const auto& camera : found) {
    std::cout << fmt::format("{:11}  {}  ({})\n", inWords(camera.position), visibleText(camera.uniqueID),
                             visibleText(camera.localizedName));
  }
  return 0;
}

}  // namespace nivlo
