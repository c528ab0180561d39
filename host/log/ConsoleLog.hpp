// The system log on standard error.
#pragma once

#include <memory>

#include "platform/drivers/LogSink.hpp"

namespace nivlo {

/// Each message becomes one line with the local time and the program's name before it. Control characters are
/// shown, not sent: a scanned text must not drive the terminal.
std::unique_ptr<LogSink> makeConsoleLog();

}  // namespace nivlo
