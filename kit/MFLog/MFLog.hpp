// Logging to a file, which a user can attach to a bug report.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "kit/MFLog/MFLoggerImpl.hpp"
#include "platform/Foundation/NSString+Format.hpp"

namespace nivlo {

// All of these may be called from any thread. The first call of any of them opens the log, creating its
// directory and file if need be, and writes that the application was launched.

/// Stores a level from 0 to 7; a higher one counts as 7. It is only stored: messages of every level are
/// written.
void MFLogSetLevel(unsigned long level);

/// Stores a size in bytes. It is only stored: the file is rolled at 1 MiB whatever it is.
void MFLogSetMaxFileSize(std::uint64_t size);

/// Returns the directory of log.txt and, once that was rolled, of log.txt.bak. Empty when the user has no
/// home directory.
std::filesystem::path MFLogFileDirectory();

// Each of the following writes one line at its level to the file and to the system log. The format is that of
// stringWithFormat.

/// Level 0, tag "<M>".
template <typename... Arguments>
void MFEmergency(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 0);
}

/// Level 1, tag "<A>".
template <typename... Arguments>
void MFAlert(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 1);
}

/// Level 2, tag "<C>".
template <typename... Arguments>
void MFCritical(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 2);
}

/// Level 3, tag "<E>".
template <typename... Arguments>
void MFError(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 3);
}

/// Level 4, tag "<W>".
template <typename... Arguments>
void MFWarning(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 4);
}

/// Level 5, tag "<N>".
template <typename... Arguments>
void MFNotice(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 5);
}

/// Level 6, tag "<I>".
template <typename... Arguments>
void MFInfo(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 6);
}

/// Level 7, tag "<D>".
template <typename... Arguments>
void MFDebug(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 7);
}

}  // namespace nivlo
