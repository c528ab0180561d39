// Properties that must hold for every input of a fuzz target.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace nivlo::fuzz {

/// Aborts the process unless the property holds; the fuzzer then reports the input. `what` names the
/// property.
inline void check(bool holds, const char* what) {
  if (holds) {
    return;
  }
  std::fprintf(stderr, "this property does not hold: %s\n", what);
  std::abort();
}

}  // namespace nivlo::fuzz
