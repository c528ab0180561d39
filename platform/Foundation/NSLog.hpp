// The system log.
#pragma once

#include <string>
#include <string_view>

#include "platform/Foundation/NSString+Format.hpp"

namespace nivlo {

/// Hands a finished line to the log sink, or writes it to standard error while no sink is installed. A line
/// end at the message's end (LF, CR LF) is not part of the line.
void writeToLog(std::string_view format, std::string_view message);

/// Writes one line to the system log. The format is the platform's (see stringWithFormat). Callable from any
/// thread.
template <typename... Arguments>
void NSLog(std::string_view format, const Arguments&... arguments) {
  writeToLog(format, stringWithFormat(format, arguments...));
}

}  // namespace nivlo
