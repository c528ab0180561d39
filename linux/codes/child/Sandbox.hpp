// Confines a process that decodes pictures which anybody may have made.
#pragma once

namespace nivlo {

/// Confines this process for good. From now on it can compute, allocate up to half a gigabyte of address
/// space, talk over kReaderSocket and write to standard error. The system kills it as soon as it tries to
/// open a file, start a process or thread, reach the network or map executable memory, and when the thread
/// that started it ends. It also runs at a lower priority and leaves no core dump.
///
/// Call it while the process has one thread. Throws std::system_error if any part of this cannot be had; the
/// process must then end, because some of it may already be in force. Sanitizer builds are confined less:
/// there only files, network and new processes are out of reach, and memory is not limited.
void enterSandbox();

}  // namespace nivlo
