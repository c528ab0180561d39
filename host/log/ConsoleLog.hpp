// The system log on standard error.
#pragma once

#include <cstdio>
#include <memory>

#include "platform/drivers/LogSink.hpp"

namespace nivlo {

/// Writes each message as one line, after the local time and the program's name. Control characters are
/// written as escapes, so that a scanned text cannot drive the terminal. When the stream is not a terminal,
/// only the first three of consecutive lines of one format are written, followed by the number of the others.
/// The stream stays the caller's. May be called from any thread.
std::unique_ptr<LogSink> makeConsoleLog(std::FILE* stream = stderr);

}  // namespace nivlo
