// nivlo-test-reader: takes the place of nivlo-reader, in the same sandbox, and fails in the way that the name
// it is started by says.
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "linux/codes/child/Sandbox.hpp"
#include "linux/codes/protocol/Messages.hpp"

namespace {

/// Has the system refuse a call, as the settings of a container may.
void refuse(int call, const std::vector<scmp_arg_cmp>& conditions = {}) {
  const auto filter = seccomp_init(SCMP_ACT_ALLOW);
  seccomp_rule_add_array(filter, SCMP_ACT_ERRNO(EPERM), call, static_cast<unsigned>(conditions.size()),
                         conditions.data());
  seccomp_load(filter);
  seccomp_release(filter);
}

}  // namespace

int main(int, char** arguments) {
  using namespace nivlo;
  const std::string name = arguments[0];
  const auto fault = name.substr(name.rfind('/') + 1);
  // These three must be impossible: status 1 says that one was not. Otherwise they go on to the reply below,
  // which is too short to be valid.
  if (fault == "inherits" && (environ[0] != nullptr || dup(STDIN_FILENO) != kReaderPicture + 1)) {
    return 1;
  }
  if (fault == "writes" && mmap(nullptr, 1, PROT_WRITE, MAP_SHARED, kReaderPicture, 0) != MAP_FAILED) {
    return 1;
  }
  if (fault == "shrinks" && ftruncate(kReaderPicture, 0) == 0) {
    return 1;
  }
  if (fault == "keeps-privileges") {
    refuse(SCMP_SYS(prctl), {SCMP_A0(SCMP_CMP_EQ, PR_SET_PDEATHSIG)});
  }
  if (fault == "keeps-limits") {
    refuse(SCMP_SYS(prlimit64), {SCMP_A2(SCMP_CMP_NE, 0)});
  }
  if (fault == "keeps-calls") {
    refuse(SCMP_SYS(seccomp));
  }
  if (const auto refused = enterSandbox()) {
    // Under the limits that are set by now, the leak checker cannot do what it does when main returns.
    _exit(static_cast<int>(*refused));
  }
  std::array<char, 64> request{};
  recv(kReaderSocket, request.data(), request.size(), 0);
  std::string answer(request.data(), sizeof(std::uint64_t));
  if (fault == "aborts") {
    std::abort();
  }
  if (fault == "opens") {
    return open("/dev/null", O_RDONLY);
  }
  if (fault == "connects") {
    return socket(AF_INET, SOCK_STREAM, 0);
  }
  if (fault == "forks") {
    return fork();
  }
  if (fault == "hoards") {
    for (std::vector<std::string> hoard;;) {
      hoard.emplace_back(1 << 24, 'x');
    }
  }
  if (fault == "babbles") {
    answer += std::string(8, '\1');
  }
  if (fault == "floods") {
    answer += std::string(kMaxReplySize, '\0');
  }
  if (fault == "hangs") {
    for (;;) {
      continue;
    }
  }
  send(kReaderSocket, answer.data(), answer.size(), 0);
  _exit(42);
}
