// When the newest frame of an open camera arrived.
#pragma once

#include <atomic>
#include <chrono>

namespace nivlo {

/// Longer than any camera pauses between two frames, shorter than a person waits before looking for a cause.
inline constexpr std::chrono::seconds kCameraSilence{3};

/// Beats with each frame. For use on any thread.
class CameraPulse {
 public:
  void beat() { newest_ = Clock::now().time_since_epoch().count(); }

  /// Returns whether a frame has arrived within kCameraSilence.
  bool isAlive() const {
    const auto newest = newest_.load();
    return newest != 0 && Clock::now().time_since_epoch() - Clock::duration(newest) < kCameraSilence;
  }

 private:
  using Clock = std::chrono::steady_clock;

  std::atomic<Clock::rep> newest_{0};  // 0 before the first frame
};

}  // namespace nivlo
