// The rotation of strategies that successive looks go through.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "linux/codes/ReadingStrategy.hpp"

namespace nivlo {

struct ReadingSchedule {
  std::vector<std::unique_ptr<ReadingStrategy>> strategies;
  /// The one that sees most of a picture's codes at once; finds of the others are completed with it.
  std::size_t mostComplete = 0;
};

/// Newly made strategies, in the order in which a reader uses them. A camera gives about ten frames a second
/// to look at, so a code that any of them can read is read within about a second.
ReadingSchedule makeReadingSchedule();

}  // namespace nivlo
