// Delays sleep until the camera is off.
#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// A delay lock of the login manager: while it is held, the machine waits with a sleep that it has announced,
/// for a few seconds at most. The lock is given back with the object. Main thread only.
class SleepInhibitor {
 public:
  explicit SleepInhibitor(GDBusConnection* connection);

  /// Gives back the lock, if it is held, and asks for a new one. Returns at once; `refused` is called if the
  /// login manager refuses.
  void take(std::function<void(const std::string& cause)> refused);

  /// Gives the lock back, also one that was asked for and has not been granted yet.
  void release();

 private:
  MethodCalls calls_;
  Descriptor descriptor_;
};

}  // namespace nivlo
