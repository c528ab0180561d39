// Running GLib's default main loop in a test.
#pragma once

#include <glib.h>

#include "tests/support/WaitFor.hpp"

namespace nivlo::test {

/// Runs the default main loop on this thread until the condition holds or kPatience runs out. Returns whether
/// it held.
inline bool loopUntil(const std::function<bool()>& condition) {
  return waitFor([&] {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    return condition();
  });
}

}  // namespace nivlo::test
