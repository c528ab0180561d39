// The code reader in a process of its own, which may die.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>

#include "linux/codes/protocol/Sanitized.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// How long a look may take, the start of the process included.
inline constexpr std::chrono::milliseconds kLiveDeadline{kSanitized ? 5000 : 500};

/// Where nivlo-reader is: beside the running program, or where an installation has it.
std::filesystem::path readerProgram();

/// Each of its readers has a child process that does what ZXingCodeReader does. The process is started with
/// the first look and ends with the reader, or with the thread that looks. A look that it does not survive,
/// does not answer sensibly or has not answered after `deadline` yields no codes; the cause is logged, and a
/// later look starts another process. Pictures of more than kLargestPicture yield no codes either. Where the
/// program is missing there are no readers, which is logged once.
std::unique_ptr<CodeReaderDriver> makeProcessCodeReaderDriver(
    std::chrono::milliseconds deadline = kLiveDeadline, std::filesystem::path program = readerProgram());

}  // namespace nivlo
