// How long to wait before something that failed is tried again.
#pragma once

#include <algorithm>
#include <chrono>

namespace nivlo {

/// Delays between attempts: each is twice the one before, up to a limit. A value; not thread-safe.
class Backoff {
 public:
  using Delay = std::chrono::milliseconds;

  constexpr Backoff(Delay first, Delay longest) : first_(first), longest_(longest), next_(first) {}

  /// The delay before the coming attempt; the one after it waits twice as long.
  Delay next() {
    const Delay delay = next_;
    next_ = std::min(2 * next_, longest_);
    return delay;
  }

  /// To be called after a success: the next failure waits as long as a first one.
  void reset() { next_ = first_; }

 private:
  Delay first_;
  Delay longest_;
  Delay next_;
};

}  // namespace nivlo
