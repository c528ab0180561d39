#include "tests/support/VirtualCamera.hpp"

#include <signal.h>

namespace nivlo::test {
namespace {

std::vector<std::string> commandLine(const VirtualCameraOptions& options) {
  std::vector<std::string> command{NIVLO_TEST_CAMERA, "--name", options.name};
  command.insert(command.end(), options.arguments.begin(), options.arguments.end());
  return command;
}

}  // namespace

VirtualCamera::VirtualCamera(const Environment& environment, const VirtualCameraOptions& options)
    : process_(commandLine(options), environment) {
  process_.expectLine("paused");
}

bool VirtualCamera::waitForStreaming(std::chrono::milliseconds timeout) {
  return process_.waitForLine("streaming", timeout).has_value();
}

bool VirtualCamera::waitForPaused(std::chrono::milliseconds timeout) {
  return process_.waitForLine("paused", timeout).has_value();
}

void VirtualCamera::freeze() { process_.signal(SIGSTOP); }

void VirtualCamera::thaw() { process_.signal(SIGCONT); }

}  // namespace nivlo::test
