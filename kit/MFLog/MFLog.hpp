// Logging to a file that the user can send along with a report.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "kit/MFLog/MFLoggerImpl.hpp"
#include "platform/Foundation/NSString+Format.hpp"

namespace nivlo {

// All of these may be called from any thread. The first call of any of them creates the log's directory and
// file and writes that the program was launched.

/// Stores the level, 0 to 7; anything higher counts as 7. The level is only kept: every message is written.
void MFLogSetLevel(unsigned long level);

/// Stores the size in bytes. It is only kept: the file is rolled at 1 MiB all the same.
void MFLogSetMaxFileSize(std::uint64_t size);

/// The directory that holds log.txt and, once it has been rolled, log.txt.bak.
std::filesystem::path MFLogFileDirectory();

// Each of the following writes one line, to the file and to the system log, in the platform's format (see
// stringWithFormat).

template <typename... Arguments>
void MFEmergency(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 0);
}

template <typename... Arguments>
void MFAlert(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 1);
}

template <typename... Arguments>
void MFCritical(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 2);
}

template <typename... Arguments>
void MFError(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 3);
}

template <typename... Arguments>
void MFWarning(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 4);
}

template <typename... Arguments>
void MFNotice(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 5);
}

template <typename... Arguments>
void MFInfo(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 6);
}

template <typename... Arguments>
void MFDebug(std::string_view format, const Arguments&... arguments) {
  MFLoggerImpl::sharedInstance()->writeMessage(stringWithFormat(format, arguments...), 7);
}

}  // namespace nivlo
