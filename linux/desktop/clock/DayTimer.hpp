// A timer for midnight.
#pragma once

#include <functional>

#include "linux/handles/Descriptor.hpp"
#include "linux/handles/OwnedSource.hpp"

namespace nivlo {

/// Calls `changed`, from the main thread's GLib loop, when a day begins in local time and when the clock is
/// set. Main thread only. It must not be destroyed within the call.
class DayTimer {
 public:
  explicit DayTimer(std::function<void()> changed);
  DayTimer(const DayTimer&) = delete;
  DayTimer& operator=(const DayTimer&) = delete;

  /// Reads the time zone again and sets the timer for the next midnight.
  void arm();

 private:
  void expired();

  std::function<void()> changed_;
  Descriptor descriptor_;
  OwnedSource source_;
};

}  // namespace nivlo
