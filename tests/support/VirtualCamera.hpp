// A PipeWire camera made of a picture.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Environment.hpp"

namespace nivlo::test {

struct VirtualCameraOptions {
  std::string name;
  /// The further arguments of nivlo-test-camera, for example {"--format", "NV12", "--color", "ff0000"};
  /// tests/support/camera/Options.hpp lists them.
  std::vector<std::string> arguments;
};

/// Publishes a camera, by a process of its own, from construction on until it is destroyed, as pulling its
/// plug would. Throws std::runtime_error, with what the process said, when the camera does not appear.
class VirtualCamera {
 public:
  VirtualCamera(const Environment& environment, const VirtualCameraOptions& options);

  /// Waits for the next time that somebody begins to take its pictures. Each time is seen once.
  bool waitForStreaming(std::chrono::milliseconds timeout = kPatience);

  /// Waits for the next time that nobody takes its pictures any more. Each time is seen once.
  bool waitForPaused(std::chrono::milliseconds timeout = kPatience);

  /// Stops the process, or lets it go on: a camera that is there and says nothing.
  void freeze();
  void thaw();

 private:
  ChildProcess process_;
};

}  // namespace nivlo::test
