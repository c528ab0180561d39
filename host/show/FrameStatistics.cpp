#include "host/show/FrameStatistics.hpp"

#include <algorithm>

namespace nivlo {

namespace {

constexpr std::size_t kKept = 300;

}  // namespace

void FrameStatistics::shown(Clock::time_point captured, Clock::time_point now) {
  const double age = std::chrono::duration<double, std::milli>(now - captured).count();
  if (ages_.size() < kKept) {
    ages_.push_back(age);
  } else {
    ages_[static_cast<std::size_t>(frames_) % kKept] = age;
  }
  ++frames_;
}

double FrameStatistics::age(double quantile) const {
  if (ages_.empty()) {
    return 0;
  }
  auto sorted = ages_;
  const auto at =
      sorted.begin() + static_cast<std::ptrdiff_t>(quantile * static_cast<double>(sorted.size() - 1));
  std::nth_element(sorted.begin(), at, sorted.end());
  return *at;
}

}  // namespace nivlo
