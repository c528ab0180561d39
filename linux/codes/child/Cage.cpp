#include "linux/codes/child/Cage.hpp"

#include <cerrno>
#include <csignal>
#include <initializer_list>
#include <system_error>
#include <vector>

#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "linux/codes/protocol/Messages.hpp"
#include "linux/codes/protocol/Sanitized.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

// The picture, a negative of it and what the strategies and ZXing need fit three times.
constexpr rlim_t kMostMemory = 512ULL << 20;
constexpr int kNiceness = 5;

void require(bool done, const char* what) {
  if (!done) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

void limit(__rlimit_resource resource, rlim_t most) {
  const rlimit limits{most, most};
  require(setrlimit(resource, &limits) == 0, "a limit cannot be set");
}

void setLimits() {
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_FSIZE, 0);
  limit(RLIMIT_NOFILE, 0);
  limit(RLIMIT_NPROC, 0);
  // AddressSanitizer and ThreadSanitizer reserve terabytes of addresses.
  if (!kSanitized) {
    limit(RLIMIT_AS, kMostMemory);
  }
}

using Filter = Owned<void, seccomp_release>;

struct Call {
  int number;
  std::vector<scmp_arg_cmp> conditions;
};

void add(const Filter& filter, std::uint32_t action, const std::vector<Call>& calls) {
  for (const auto& [number, conditions] : calls) {
    const int error = seccomp_rule_add_array(filter.get(), action, number,
                                             static_cast<unsigned>(conditions.size()), conditions.data());
    if (error != 0) {
      throw std::system_error(-error, std::generic_category(), "no rule for a system call");
    }
  }
}

/// Memory without code, the socket, the last words of a program that aborts, and the end.
Filter makeFilter() {
  Filter filter(seccomp_init(SCMP_ACT_KILL_PROCESS));
  add(filter, SCMP_ACT_ALLOW,
      {{SCMP_SYS(recvfrom), {SCMP_A0(SCMP_CMP_EQ, kReaderSocket)}},
       {SCMP_SYS(sendto), {SCMP_A0(SCMP_CMP_EQ, kReaderSocket), SCMP_A4(SCMP_CMP_EQ, 0)}},
       {SCMP_SYS(brk), {}},
       {SCMP_SYS(mmap), {SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)}},
       {SCMP_SYS(mremap), {}},
       {SCMP_SYS(munmap), {}},
       {SCMP_SYS(madvise), {}},
       {SCMP_SYS(futex), {}},
       {SCMP_SYS(clock_gettime), {}},
       {SCMP_SYS(write), {SCMP_A0(SCMP_CMP_EQ, STDERR_FILENO)}},
       {SCMP_SYS(writev), {SCMP_A0(SCMP_CMP_EQ, STDERR_FILENO)}},
       {SCMP_SYS(rt_sigprocmask), {}},
       {SCMP_SYS(getpid), {}},
       {SCMP_SYS(gettid), {}},
       {SCMP_SYS(tgkill), {SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(getpid()))}},
       {SCMP_SYS(exit_group), {}}});
  return filter;
}

/// Under a sanitizer, whose own calls are many and change, only what the cage is for is kept out. It is less
/// than makeFilter does: a report that wants to open a file ends before it is written.
Filter makeLaxFilter() {
  Filter filter(seccomp_init(SCMP_ACT_ALLOW));
  add(filter, SCMP_ACT_KILL_PROCESS,
      {{SCMP_SYS(open), {}},
       {SCMP_SYS(openat), {}},
       {SCMP_SYS(openat2), {}},
       {SCMP_SYS(creat), {}},
       {SCMP_SYS(socket), {}},
       {SCMP_SYS(connect), {}},
       {SCMP_SYS(execve), {}},
       {SCMP_SYS(execveat), {}},
       {SCMP_SYS(fork), {}},
       {SCMP_SYS(vfork), {}},
       {SCMP_SYS(clone), {}},
       {SCMP_SYS(clone3), {}}});
  return filter;
}

}  // namespace

void enterCage() {
  require(prctl(PR_SET_PDEATHSIG, SIGKILL) == 0, "the process would outlive its parent");
  require(prctl(PR_SET_DUMPABLE, 0) == 0, "other processes could look inside");
  require(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0, "rights could be gained");
  require(setpriority(PRIO_PROCESS, 0, kNiceness) == 0, "the priority cannot be lowered");
  setLimits();
  const Filter filter = kSanitized ? makeLaxFilter() : makeFilter();
  const int error = seccomp_load(filter.get());
  if (error != 0) {
    throw std::system_error(-error, std::generic_category(), "system calls cannot be filtered");
  }
}

}  // namespace nivlo
