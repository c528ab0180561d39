// The rotation of strategies that successive looks go through.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

struct ReadingSchedule {
  std::vector<std::unique_ptr<ReadingStrategy>> rotation;
  /// Some of them, which together see most of a picture's codes; finds of the others are completed with
  /// these.
  std::vector<ReadingStrategy*> mostComplete;
};

/// Newly made strategies, in the order in which a reader uses them. A camera gives about ten frames a second
/// to look at, so a code that any of them can read is read within about a second.
ReadingSchedule makeReadingSchedule();

}  // namespace nivlo
