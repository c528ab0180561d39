// An accelerometer that plays back a script, for trying out what a shake does.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// Makes an accelerometer from a script. Each of its lines "SECONDS, X, Y, Z" is one reading in g, which is
/// delivered once, that many seconds after a stream is started, whatever the stream's interval. The seconds
/// must not decrease from line to line. Empty lines and lines that begin with "#" are ignored. When the file
/// cannot be read or a line is not valid, returns null and writes the cause to `*error`.
std::unique_ptr<AccelerometerDriver> makeScriptedAccelerometer(const std::filesystem::path& script,
                                                               std::string* error);

}  // namespace nivlo
