// Measures what a look costs, and for comparison one call of ZXing with its default options.
#pragma once

#include <vector>

#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::bench {

/// CPU time in milliseconds.
struct LookCost {
  std::vector<double> looks;         ///< ten per picture
  std::vector<double> libraryCalls;  ///< one per picture that did not crash ZXing
  int libraryCrashes = 0;
};

/// Scales each photo to fill a frame of this size, and measures it in a process of its own, because a call
/// with ZXing's default options can crash. Photos that cannot be loaded are skipped.
LookCost measureLookCost(const std::vector<test::Photo>& photos, int width, int height);

}  // namespace nivlo::bench
