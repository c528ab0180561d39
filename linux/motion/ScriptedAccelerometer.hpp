// An accelerometer that plays readings from a file, for trying out what a shake does.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// Each line "SECONDS, X, Y, Z" is one reading in g, delivered once, so many seconds after the start. Seconds
/// must not decrease; empty lines and lines that begin with "#" are passed over. Null, with the cause in
/// `*error`, where the file cannot be read or a line makes no sense.
std::unique_ptr<AccelerometerDriver> makeScriptedAccelerometer(const std::filesystem::path& script,
                                                               std::string* error);

}  // namespace nivlo
