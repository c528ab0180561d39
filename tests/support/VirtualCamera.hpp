// A PipeWire camera that delivers a test picture.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Environment.hpp"

namespace nivlo::test {

struct VirtualCameraOptions {
  std::string name;  ///< PipeWire node name
  /// Further arguments of nivlo-test-camera, for example {"--format", "NV12", "--color", "ff0000"}. They are
  /// listed in tests/support/camera/Options.hpp.
  std::vector<std::string> arguments;
};

/// Publishes a camera from a process of its own. Destroying the object kills that process, which looks like
/// unplugging the camera.
class VirtualCamera {
 public:
  /// Waits until the camera has appeared. Throws std::runtime_error, with the process's output, if it does
  /// not.
  VirtualCamera(const Environment& environment, const VirtualCameraOptions& options);

  /// Waits until a program starts streaming from the camera. Each start is reported once. False on timeout.
  bool waitForStreaming(std::chrono::milliseconds timeout = kPatience);

  /// Waits until no program streams from the camera any more. Each such moment is reported once. False on
  /// timeout.
  bool waitForPaused(std::chrono::milliseconds timeout = kPatience);

  /// Suspends the process: the camera stays present but delivers nothing, not even an error.
  void freeze();
  /// Resumes the process.
  void thaw();

 private:
  ChildProcess process_;
};

}  // namespace nivlo::test
