// Confines a process that decodes pictures which anybody may have made.
#pragma once

#include <optional>

#include "linux/codes/protocol/Messages.hpp"

namespace nivlo {

/// Confines this process for good. From now on it can compute, allocate up to half a gigabyte of address
/// space, talk over kReaderSocket and write to standard error. The system kills it as soon as it tries to
/// open a file, start a process or thread, reach the network or map executable memory, and when the thread
/// that started it ends. It also runs at a lower priority, unless it was started at an even lower one, and
/// leaves no core dump.
///
/// Call it while the process has one thread. Returns nothing if all of this is in force, else the step that
/// the system refused; the process must then end, because some of it may already be in force. Sanitizer
/// builds are confined less: there only files, network and new processes are out of reach, and memory is not
/// limited.
std::optional<SandboxStep> enterSandbox();

}  // namespace nivlo
