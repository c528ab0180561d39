// nivlo-test-reader: takes the place of nivlo-reader, in the same sandbox, and fails in the way that the name
// it is started by says.
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include "linux/codes/child/Sandbox.hpp"
#include "linux/codes/protocol/Messages.hpp"

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
  enterSandbox();
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
