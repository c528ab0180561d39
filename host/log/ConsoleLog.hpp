// The system log on standard error.
#pragma once

#include <memory>

#include <unistd.h>

#include "platform/drivers/LogSink.hpp"

namespace nivlo {

/// Writes each message as one line, after the local time and the program's name. Control characters are
/// written as escapes, so that a scanned text cannot drive the terminal. When that is not a terminal,
/// only the first three of consecutive lines of one format are written, followed by the number of the others.
/// Lines for which there is no room without waiting are lost, and their number is written once there is room
/// again. The descriptor stays the caller's. May be called from any thread.
std::unique_ptr<LogSink> makeConsoleLog(int file = STDERR_FILENO);

}  // namespace nivlo
