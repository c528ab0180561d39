// A PipeWire daemon of the test's own, with its session manager.
#pragma once

#include <memory>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo::test {

/// Runs pipewire and wireplumber in a private bus's session, from construction on; it sees none of the
/// machine's devices' users and is seen by none. Throws std::runtime_error, with what the daemons said, when
/// they do not come up.
class PrivatePipeWire {
 public:
  /// The bus must outlive it.
  explicit PrivatePipeWire(PrivateBus& bus);

  /// The bus's environment, to which the daemons belong.
  Environment environment() const { return bus_.environment(); }

  /// Kills both daemons, as a crash would.
  void stopDaemon();

  /// Starts both and waits until streams would be linked to cameras.
  void startDaemon();

 private:
  PrivateBus& bus_;
  std::unique_ptr<ChildProcess> pipewire_, sessionManager_;
};

}  // namespace nivlo::test
