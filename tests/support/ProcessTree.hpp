// Processes that another process has started.
#pragma once

#include <string>
#include <string_view>

#include <sys/types.h>

namespace nivlo::test {

/// Returns the child of the process that runs this program; 0 if it has none.
pid_t childNamed(pid_t process, std::string_view program);

/// Returns whether the process has not ended, even if nobody has waited for it yet.
bool isAlive(pid_t process);

/// Returns the content of a file that the kernel keeps about the process, for example "maps"; empty if it is
/// gone.
std::string processFile(pid_t process, std::string_view name);

}  // namespace nivlo::test
