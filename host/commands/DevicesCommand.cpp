#include "host/commands/DevicesCommand.hpp"

#include <iostream>
#include <string>

#include <fmt/format.h>

#include "host/commands/SharedOptions.hpp"
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

DevicesCommand::DevicesCommand(CLI::App& app)
    : Command(app, "devices", "List the cameras, and what machine this is") {
  addSources(arguments(), sources_);
  addMachine(arguments(), machine_);
}

int DevicesCommand::run() const {
  installDrivers({.logSink = makeConsoleLog(), .device = makeLinuxDeviceIdentity(machine_)});
  printMachine();
  std::string error;
  const auto cameras = makeSelectedCameras(sources_, &error);
  if (!cameras) {
    std::cerr << "nivlo: " << visibleText(error) << '\n';
    return 1;
  }
  const auto found = cameras->cameras();
  if (found.empty()) {
    std::cout << "no cameras found\n";
  }
  for (const auto& camera : found) {
    std::cout << fmt::format("{:11}  {}  ({})\n", sideInWords(camera.position), visibleText(camera.uniqueID),
                             visibleText(camera.localizedName));
  }
  return 0;
}

}  // namespace nivlo
