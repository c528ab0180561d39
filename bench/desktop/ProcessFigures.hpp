// What a process costs, as the kernel counts it.
#pragma once

#include <sys/types.h>

namespace nivlo::bench {

/// Seconds of CPU, of the process and of all its threads, in user and in kernel mode, counted in hundredths.
double cpuSeconds(pid_t process);

/// Megabytes in memory: all of it, shared pages in full.
double residentMegabytes(pid_t process);

int openDescriptors(pid_t process);

}  // namespace nivlo::bench
