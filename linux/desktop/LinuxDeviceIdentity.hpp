// What Linux says about the machine.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/drivers/DeviceIdentity.hpp"

namespace nivlo {

/// Looks once, when it is made. The machine identifier is the kernel's, unless `machineOverride` holds
/// another. The model comes from the device tree or else the firmware, "Linux" where neither names one; the
/// system version from os-release, or else the kernel's. `root` is the directory whose proc, sys, etc and usr
/// are read. Never null.
std::unique_ptr<DeviceIdentity> makeLinuxDeviceIdentity(std::string machineOverride,
                                                        const std::filesystem::path& root = "/");

}  // namespace nivlo
