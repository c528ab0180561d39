#include "linux/codes/process/RestartPause.hpp"

#include <algorithm>

namespace nivlo {

using namespace std::chrono_literals;

bool RestartPause::failed(Clock::time_point now) {
  const bool isFirst = length_ == 0ms || now - lastFailure_ > 1min;
  length_ = isFirst ? 100ms : std::min<std::chrono::milliseconds>(2 * length_, 5s);
  lastFailure_ = now;
  end_ = now + length_;
  return isFirst;
}

}  // namespace nivlo
