// The system log on standard error.
#pragma once

#include <cstdio>
#include <memory>

#include "platform/drivers/LogSink.hpp"

namespace nivlo {

/// Each message becomes one line with the local time and the program's name before it. Control characters are
/// shown, not sent: a scanned text must not drive the terminal. Where the stream is no terminal but a file or
/// a journal, only the first three of a run of lines of one format are written, and then how many more there
/// were.
std::unique_ptr<LogSink> makeConsoleLog(std::FILE* stream = stderr);

}  // namespace nivlo
