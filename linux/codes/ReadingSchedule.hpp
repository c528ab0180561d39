// The strategies that successive looks rotate through.
#pragma once

#include <memory>
#include <vector>

#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// Owns its strategies.
struct ReadingSchedule {
  std::vector<std::unique_ptr<ReadingStrategy>> rotation;
  /// The strategies of the rotation that together read most codes. When any strategy has found a code, these
  /// look for its neighbours.
  std::vector<ReadingStrategy*> mostComplete;
};

/// Returns new strategies in the order in which a reader uses them. One round of the rotation takes about as
/// many looks as a camera allows in a second (ten), so a code that any of the strategies can read is read
/// within about a second.
ReadingSchedule makeReadingSchedule();

}  // namespace nivlo
