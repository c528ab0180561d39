// One way of looking for codes in a picture.
#pragma once

#include <vector>

#include "linux/codes/LumaPicture.hpp"
#include "linux/codes/Reading.hpp"

namespace nivlo {

/// Strategies differ in what they find and what they cost; a reader goes through several, one a look. The
/// cost of one read is bounded, whatever the picture. Used by one thread at a time.
class ReadingStrategy {
 public:
  virtual ~ReadingStrategy() = default;

  /// The codes found, with outlines in pixels of `picture`, in no order; one code can be there several times.
  /// May throw.
  virtual std::vector<Reading> read(const LumaPicture& picture) = 0;
};

}  // namespace nivlo
