#include "linux/codes/child/Sandbox.hpp"

#include <algorithm>
#include <csignal>
#include <vector>

#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "linux/codes/protocol/Sanitized.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

// About three times what the largest picture, its inverted copy, the strategies and ZXing need together.
constexpr rlim_t kAddressSpaceLimit = 512ULL << 20;
constexpr int kNiceness = 5;

bool giveUpPrivileges() {
  return prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && prctl(PR_SET_DUMPABLE, 0) == 0 &&
         prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
}

/// Ordinary users may only raise a niceness. Decoding at a priority that is too high is a nuisance and no
/// danger, so the reader goes on if the system refuses.
void lowerPriority() { setpriority(PRIO_PROCESS, 0, std::max(kNiceness, getpriority(PRIO_PROCESS, 0))); }

/// Keeps a limit that is lower already, because only root may raise it.
bool limit(__rlimit_resource resource, rlim_t value) {
  rlimit limits{};
  if (getrlimit(resource, &limits) != 0) {
    return false;
  }
  limits.rlim_max = std::min(limits.rlim_max, value);
  limits.rlim_cur = limits.rlim_max;
  return setrlimit(resource, &limits) == 0;
}

bool setLimits() {
  // AddressSanitizer and ThreadSanitizer reserve terabytes of address space.
  return limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, 0) && limit(RLIMIT_NOFILE, 0) &&
         limit(RLIMIT_NPROC, 0) && (kSanitized || limit(RLIMIT_AS, kAddressSpaceLimit));
}

using Filter = Owned<void, seccomp_release>;

struct Call {
  int number;
  std::vector<scmp_arg_cmp> conditions;
};

/// Returns a filter that applies `action` to these calls and `otherwise` to all others, or null if libseccomp
/// cannot make it.
Filter filterOf(std::uint32_t otherwise, std::uint32_t action, const std::vector<Call>& calls) {
  Filter filter(seccomp_init(otherwise));
  for (const auto& [number, conditions] : calls) {
    if (!filter || seccomp_rule_add_array(filter.get(), action, number,
                                          static_cast<unsigned>(conditions.size()), conditions.data()) != 0) {
      return nullptr;
    }
  }
  return filter;
}

/// Allows memory that is not executable, the socket, a last message on standard error, and ending, also by
/// abort(). Every other system call kills the process.
Filter makeFilter() {
  return filterOf(SCMP_ACT_KILL_PROCESS, SCMP_ACT_ALLOW,
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
}

/// Kills the process only at the system calls that the sandbox exists to stop. A sanitizer's runtime makes
/// many other calls, which differ from version to version. A sanitizer report that has to open a file is
/// lost.
Filter makeSanitizerFilter() {
  return filterOf(SCMP_ACT_ALLOW, SCMP_ACT_KILL_PROCESS,
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
}

}  // namespace

std::optional<SandboxStep> enterSandbox() {
  if (!giveUpPrivileges()) {
    return SandboxStep::Privileges;
  }
  lowerPriority();
  if (!setLimits()) {
    return SandboxStep::Limits;
  }
  const Filter filter = kSanitized ? makeSanitizerFilter() : makeFilter();
  if (!filter || seccomp_load(filter.get()) != 0) {
    return SandboxStep::Filter;
  }
  return std::nullopt;
}

}  // namespace nivlo
