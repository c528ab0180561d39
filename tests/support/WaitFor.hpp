// Waiting, with a deadline, until something becomes true.
#pragma once

#include <chrono>
#include <functional>

namespace nivlo::test {

/// The longest time that tests wait for what must happen. A healthy system needs a small fraction of it, a
/// loaded machine under a sanitizer more.
inline constexpr std::chrono::seconds kPatience{20};

/// Polls `condition` on this thread every few milliseconds until it holds or the time is up. Returns whether
/// it held. It is evaluated at least once.
bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds timeout = kPatience);

}  // namespace nivlo::test
