// What a camera costs that sees a still scene in which there is no code.
#pragma once

#include <vector>

#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::bench {

/// Of one core.
struct IdleCost {
  double feeding = 0;  ///< by the thread that passes the camera's frames on
  double reading = 0;  ///< by the reader's process
};

/// The scenes come from a camera of 1280x720 that makes 30 noisy pictures a second, all cameras at once, and
/// are measured for half a minute once they have been looked at as a new scene is. Throws std::runtime_error.
std::vector<IdleCost> measureIdleCost(const std::vector<test::Photo>& scenes);

}  // namespace nivlo::bench
