#include "linux/desktop/clock/LocalMidnight.hpp"

#include <chrono>
#include <numeric>

namespace nivlo {

namespace {

int localDayOfYear(std::time_t time) {
  std::tm local{};
  localtime_r(&time, &local);
  return local.tm_yday;
}

}  // namespace

std::time_t nextLocalMidnight(std::time_t now) {
  const std::chrono::seconds twoDays = std::chrono::days(2);
  const int today = localDayOfYear(now);
  std::time_t before = now;
  std::time_t after = now + twoDays.count();
  while (after - before > 1) {
    const auto middle = std::midpoint(before, after);
    (localDayOfYear(middle) == today ? before : after) = middle;
  }
  return after;
}

}  // namespace nivlo
