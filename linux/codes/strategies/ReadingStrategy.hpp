// One way of looking for codes in a picture.
#pragma once

#include <vector>

#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/strategies/PictureFeatures.hpp"

namespace nivlo {

/// Strategies differ in what they find and what they cost. One look uses as many of them as its budget
/// allows, and the cost of each is bounded, whatever the picture shows. Used by one thread at a time.
class ReadingStrategy {
 public:
  virtual ~ReadingStrategy() = default;

  /// Returns the codes found, in no particular order, with outlines in pixels of the features' picture. One
  /// code can be there several times. May throw.
  virtual std::vector<Reading> read(PictureFeatures& features) = 0;

  /// Estimates the cost of reading this picture if it holds no code. The unit is one pixel of a picture that
  /// is searched once for matrix codes. Finding the features is not included.
  virtual double cost(PictureFeatures& features) const = 0;
};

}  // namespace nivlo
