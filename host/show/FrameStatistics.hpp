// How many pictures were shown, and how old they were.
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace nivlo {

/// Ages are of the last few hundred pictures: from the camera's capture to the moment they were handed to the
/// screen.
class FrameStatistics {
 public:
  using Clock = std::chrono::steady_clock;

  void shown(Clock::time_point captured, Clock::time_point now = Clock::now());

  long frames() const { return frames_; }
  /// Milliseconds that this part of the ages, from 0 to 1, does not exceed; 0 before the first picture.
  double age(double part) const;

 private:
  long frames_ = 0;
  std::vector<double> ages_;
};

}  // namespace nivlo
