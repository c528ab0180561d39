// A code reader that decodes in a child process, so that a crash costs one look.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>

#include "linux/codes/protocol/Sanitized.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// The time limit of one look, including the start of the process.
inline constexpr std::chrono::milliseconds kLiveDeadline{kSanitized ? 5000 : 500};

/// The path of nivlo-reader: beside the running program in a build tree, else where it is installed.
std::filesystem::path readerProgram();

/// Each reader that the driver makes runs a PictureReader in a sandboxed child process. The process starts
/// with the first look and is killed with the reader, or with the thread that looks.
///
/// A look yields no codes if the process crashes, sends an invalid reply or has not replied after `deadline`.
/// A look at least 0.1 s later then starts a new process; the delay doubles with each further failure, up to
/// 5 s. The cause of the first failure is logged; after a minute without any, the next one counts as a first
/// again. A picture of more than kMaxPicturePixels yields no
/// codes either, which each reader logs once. Without the program, makeReader() returns null, which the
/// driver logs once.
std::unique_ptr<CodeReaderDriver> makeProcessCodeReaderDriver(
    std::chrono::milliseconds deadline = kLiveDeadline, std::filesystem::path program = readerProgram());

}  // namespace nivlo
