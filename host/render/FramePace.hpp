// Limits the number of pictures a second.
#pragma once

#include <atomic>
#include <chrono>
#include <optional>

namespace nivlo {

/// The limit that the user set, and whether the machine's battery is to be spared. Callable from any thread.
class FramePace {
 public:
  /// `perSecond` is at least 1; nothing for no limit.
  explicit FramePace(std::optional<int> perSecond = std::nullopt) : perSecond_(perSecond) {}

  /// Asks for half as many pictures, and half as many looks for codes.
  void setHalved(bool halved) { halved_ = halved; }
  bool isHalved() const { return halved_; }

  /// The shortest time between two pictures of a camera before they are halved; 0 without a limit.
  std::chrono::nanoseconds interval() const;
  /// The shortest time between two drawn pictures; 0 without a limit. Where the rate of the pictures is
  /// halved and not limited, it is half of the 60 a second that most screens show.
  std::chrono::nanoseconds drawingInterval() const;

 private:
  const std::optional<int> perSecond_;
  std::atomic<bool> halved_{false};
};

/// Spaces events out, so that on average no more than one comes in an interval. For use by one thread.
class Spacing {
 public:
  using Clock = std::chrono::steady_clock;

  /// Returns how long the next event must wait; 0 if it may come now. An event that is early by less than
  /// cameras and timers deviate need not wait: else a camera at exactly the limit would lose every other
  /// frame.
  Clock::duration wait(Clock::time_point now, Clock::duration interval) const;
  /// Must be told of each event.
  void happened(Clock::time_point now, Clock::duration interval);

 private:
  std::optional<Clock::time_point> due_;
};

}  // namespace nivlo
