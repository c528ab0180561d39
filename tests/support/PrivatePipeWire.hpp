// A private PipeWire daemon for a test, with its session manager.
#pragma once

#include <memory>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo::test {

/// Runs pipewire and wireplumber in the session of a private bus until it is destroyed. No other session on
/// the machine sees them, nor they it. Construction waits as startDaemon does, and throws std::runtime_error
/// with the daemons' output if they do not come up.
class PrivatePipeWire {
 public:
  /// `bus` must outlive this object.
  explicit PrivatePipeWire(PrivateBus& bus);

  /// Returns the environment of the bus, which programs need to reach the daemons.
  Environment environment() const { return bus_.environment(); }

  /// Kills both daemons, as a crash would.
  void stopDaemon();

  /// Starts both daemons and waits until new streams would be linked to cameras.
  void startDaemon();

 private:
  PrivateBus& bus_;
  std::unique_ptr<ChildProcess> pipewire_, sessionManager_;
};

}  // namespace nivlo::test
