#include "host/commands/DevicesCommand.hpp"

#include <iostream>
#include <string>

#include <fmt/format.h>

#include "host/log/ConsoleLog.hpp"
#include "host/show/CameraActivity.hpp"
#include "host/text/VisibleText.hpp"
#include "kit/UIDevice+Hardware/UIDevice+Hardware.hpp"
#include "linux/camera/selection/SelectedCameras.hpp"
#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

void printMachine() {
  const auto device = UIDevice::currentDevice();
  std::cout << fmt::format("machine      {}, rank {:g}", visibleText(hardwareString(*device)),
                           hardwareNumber(*device, hardware(*device)));
  if (hardware(*device) != HardwareNotAvailable) {
    std::cout << fmt::format(", {} ({})", hardwareDescription(*device).value_or(""),
                             hardwareSimpleDescription(*device).value_or(""));
  }
  std::cout << fmt::format("\nmodel        {}\nsystem       {}\n", visibleText(device->model()),
                           visibleText(device->systemVersion()));
}

}  // namespace

int runDevices(const DevicesOptions& options) {
  installDrivers({.logSink = makeConsoleLog(), .device = makeLinuxDeviceIdentity(options.machine)});
  printMachine();
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
    std::cout << fmt::format("{:11}  {}  ({})\n", sideInWords(camera.position), visibleText(camera.uniqueID),
                             visibleText(camera.localizedName));
  }
  return 0;
}

}  // namespace nivlo
