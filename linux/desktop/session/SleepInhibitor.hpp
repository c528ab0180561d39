// Keeps the machine awake until the wallpaper is ready to sleep.
#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// The login manager's delay lock: while it is held, a sleep that has been announced waits, for some seconds
/// at most. Main thread only.
class SleepInhibitor {
 public:
  explicit SleepInhibitor(GDBusConnection* connection);

  /// Asks for the lock anew; it is held soon after, unless it is refused.
  void take(std::function<void(const std::string& cause)> refused);

  /// Gives it back; one that is still to come is given back when it comes.
  void release();

 private:
  MethodCalls calls_;
  Descriptor descriptor_;
};

}  // namespace nivlo
