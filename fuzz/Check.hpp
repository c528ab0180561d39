// What must hold for any input.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace nivlo::fuzz {

/// Ends the process, which the fuzzer reports with the input, where it does not hold.
inline void check(bool holds, const char* what) {
  if (holds) {
    return;
  }
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace nivlo::fuzz
