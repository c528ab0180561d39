// Measures what scanning costs while the camera sees a still scene without codes.
#pragma once

#include <vector>

#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::bench {

/// CPU time as a part of one core's.
struct IdleCost {
  double feeding = 0;  ///< used by the thread that passes the camera's frames on
  double reading = 0;  ///< used by the reader process
};

/// Shows each scene to a camera of its own, of 1280x720 at 30 noisy frames per second, all at the same time.
/// Waits until the scenes no longer count as new, and then measures for half a minute. Returns one result per
/// scene, in their order. Throws std::runtime_error if a photo cannot be loaded or a reader is missing or
/// ends.
std::vector<IdleCost> measureIdleCost(const std::vector<test::Photo>& scenes);

}  // namespace nivlo::bench
