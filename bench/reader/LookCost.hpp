// What a look costs, beside one call of ZXing with the options that it has by itself.
#pragma once

#include <vector>

#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::bench {

/// CPU time in milliseconds.
struct LookCost {
  std::vector<double> looks;         ///< ten of each picture
  std::vector<double> libraryCalls;  ///< one of each picture that it survived
  int libraryCrashes = 0;
};

/// Of photos that are scaled so that they fill a frame of that size. Each is measured in a process of its
/// own, as a call with ZXing's own options can end it.
LookCost measureLookCost(const std::vector<test::Photo>& photos, int width, int height);

}  // namespace nivlo::bench
