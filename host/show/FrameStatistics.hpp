// Counts the pictures that were shown, and knows how old they were.
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace nivlo {

/// A picture's age is the time from its capture to the moment at which it was handed to the screen. Ages are
/// kept for the last 300 pictures.
class FrameStatistics {
 public:
  using Clock = std::chrono::steady_clock;

  void shown(Clock::time_point captured, Clock::time_point now = Clock::now());

  long frames() const { return frames_; }
  /// Returns a quantile of the ages in milliseconds, 0 before the first picture. 0.5 asks for the median.
  double age(double quantile) const;

 private:
  long frames_ = 0;
  std::vector<double> ages_;
};

}  // namespace nivlo
