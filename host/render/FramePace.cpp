#include "host/render/FramePace.hpp"

#include <algorithm>

namespace nivlo {

namespace {

constexpr int kScreenRate = 60;
constexpr std::chrono::milliseconds kMostDeviation{10};

}  // namespace

std::chrono::nanoseconds FramePace::interval() const {
  return perSecond_ ? std::chrono::nanoseconds(std::chrono::seconds(1)) / *perSecond_
                    : std::chrono::nanoseconds(0);
}

std::chrono::nanoseconds FramePace::drawingInterval() const {
  if (!halved_) {
    return interval();
  }
  return 2 * std::max(interval(), std::chrono::nanoseconds(std::chrono::seconds(1)) / kScreenRate);
}

Spacing::Clock::duration Spacing::wait(Clock::time_point now, Clock::duration interval) const {
  if (!due_ || interval == Clock::duration::zero()) {
    return Clock::duration::zero();
  }
  const auto early = std::min<Clock::duration>(interval / 4, kMostDeviation);
  // Never longer than one interval, which may have become shorter since the last event.
  const auto left = std::min(*due_ - now, interval);
  return left > early ? left : Clock::duration::zero();
}

void Spacing::happened(Clock::time_point now, Clock::duration interval) {
  const bool inTime = due_ && now <= *due_ + interval;
  due_ = (inTime ? *due_ : now) + interval;
}

}  // namespace nivlo
