#include "tests/support/WaitFor.hpp"

#include <thread>

namespace nivlo::test {

bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
  }
  return true;
}

}  // namespace nivlo::test
