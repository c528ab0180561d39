// The delays before something that failed is tried again.
#pragma once

#include <algorithm>
#include <chrono>

namespace nivlo {

/// A sequence of delays that double, up to a limit. A value; not thread-safe.
class Backoff {
 public:
  using Delay = std::chrono::milliseconds;

  /// `first` is the delay after a first failure, `longest` the limit. Both must be positive.
  constexpr Backoff(Delay first, Delay longest) : first_(first), longest_(longest), next_(first) {}

  /// Returns how long to wait before the next attempt, and doubles the delay after that one.
  Delay next() {
    const Delay delay = next_;
    next_ = std::min(2 * next_, longest_);
    return delay;
  }

  /// Starts over, as after a success: the next delay is the first one again.
  void reset() { next_ = first_; }

 private:
  Delay first_;
  Delay longest_;
  Delay next_;
};

}  // namespace nivlo
