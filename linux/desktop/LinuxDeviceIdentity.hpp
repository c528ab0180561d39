// The machine's identity, from the kernel and the firmware.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/drivers/DeviceIdentity.hpp"

namespace nivlo {

/// Makes an identity that is read once, here. The machine identifier is `machineOverride` or, when that is
/// empty, the kernel's, for example "x86_64". The model is taken from the device tree or else from the
/// firmware, and is "Linux" when neither names one. The system version is taken from os-release or else is
/// the kernel's. `root` is the directory whose proc, sys, etc and usr are read. Never null.
std::unique_ptr<DeviceIdentity> makeLinuxDeviceIdentity(std::string machineOverride,
                                                        const std::filesystem::path& root = "/");

}  // namespace nivlo
