// CPU time and memory of a process, from the kernel.
#pragma once

#include <sys/types.h>

namespace nivlo::bench {

/// CPU seconds of all threads of the process so far, in user and kernel mode, in steps of a hundredth.
double cpuSeconds(pid_t process);

/// Resident memory in megabytes, with shared pages counted in full.
double residentMegabytes(pid_t process);

/// Memory in megabytes that no other process shares, which is what ending the process would give back.
double privateMegabytes(pid_t process);

/// The number of open file descriptors.
int openDescriptors(pid_t process);

}  // namespace nivlo::bench
