// Waiting for something to become true, with a deadline.
#pragma once

#include <chrono>
#include <functional>

namespace nivlo::test {

/// Generous enough for a loaded machine under a sanitizer; a healthy system takes a small fraction of it.
inline constexpr std::chrono::seconds kPatience{20};

/// Asks again and again, every few milliseconds, until `condition` holds or the time is up. Returns whether
/// it held.
bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds timeout = kPatience);

}  // namespace nivlo::test
