// How long a reader that has failed is left alone.
#pragma once

#include <chrono>

namespace nivlo {

/// A tenth of a second after the first failure, twice as long after each further one, five seconds at most. A
/// failure after a minute without one is a first again.
class RestartPause {
 public:
  using Clock = std::chrono::steady_clock;

  /// Returns whether it is a first failure.
  bool failed(Clock::time_point now);

  bool isOver(Clock::time_point now) const { return now >= end_; }

 private:
  std::chrono::milliseconds length_{};
  Clock::time_point lastFailure_;
  Clock::time_point end_;
};

}  // namespace nivlo
