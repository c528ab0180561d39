// Writing to the system log.
#pragma once

#include <string>
#include <string_view>

#include "platform/Foundation/NSString+Format.hpp"

namespace nivlo {

/// Writes a formatted line to the log sink, or to standard error while no sink is installed. One line end (LF
/// or CR LF) at the end of the message is dropped. `format` is what the message was made from. Callable from
/// any thread.
void writeToLog(std::string_view format, std::string_view message);

/// Writes one line to the system log, for example NSLog("tide: %@ cannot be read; is it mounted?", path). The
/// format is that of stringWithFormat. Callable from any thread.
template <typename... Arguments>
void NSLog(std::string_view format, const Arguments&... arguments) {
  writeToLog(format, stringWithFormat(format, arguments...));
}

}  // namespace nivlo
