#include "linux/codes/child/Sandbox.hpp"

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

// About three times what the largest picture, its inverted copy, the strategies and ZXing need together.
constexpr rlim_t kAddressSpaceLimit = 512ULL << 20;
constexpr int kNiceness = 5;

void require(bool done, const char* what) {
  if (!done) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

void limit(__rlimit_resource resource, rlim_t value) {
  const rlimit limits{value, value};
  require(setrlimit(resource, &limits) == 0, "cannot set a resource limit");
}

void setLimits() {
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_FSIZE, 0);
  limit(RLIMIT_NOFILE, 0);
  limit(RLIMIT_NPROC, 0);
  // AddressSanitizer and ThreadSanitizer reserve terabytes of address space.
  if (!kSanitized) {
    limit(RLIMIT_AS, kAddressSpaceLimit);
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
      throw std::system_error(-error, std::generic_category(), "cannot add a rule to the system-call filter");
    }
  }
}

/// Allows memory that is not executable, the socket, a last message on standard error, and ending, also by
/// abort(). Every other system call kills the process.
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

/// Kills the process only at the system calls that the sandbox exists to stop. A sanitizer's runtime makes
/// many other calls, which differ from version to version. A sanitizer report that has to open a file is
/// lost.
Filter makeSanitizerFilter() {
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

void enterSandbox() {
  require(prctl(PR_SET_PDEATHSIG, SIGKILL) == 0, "cannot arrange to be killed with the parent");
  require(prctl(PR_SET_DUMPABLE, 0) == 0, "cannot forbid debuggers and core dumps");
  require(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0, "cannot give up gaining privileges");
  require(setpriority(PRIO_PROCESS, 0, kNiceness) == 0, "cannot lower the priority");
  setLimits();
  const Filter filter = kSanitized ? makeSanitizerFilter() : makeFilter();
  const int error = seccomp_load(filter.get());
  if (error != 0) {
    throw std::system_error(-error, std::generic_category(), "cannot load the system-call filter");
  }
}

}  // namespace nivlo
