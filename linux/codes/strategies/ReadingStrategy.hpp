// One way of looking for codes in a picture.
#pragma once

#include <vector>

#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/strategies/PictureFeatures.hpp"

namespace nivlo {

/// Strategies differ in what they find and what they cost; a reader goes through several, one a look. The
/// cost of one read is bounded, whatever the picture. Used by one thread at a time.
class ReadingStrategy {
 public:
  virtual ~ReadingStrategy() = default;

  /// The codes found, with outlines in pixels of the scene's picture, in no order; one code can be there
  /// several times. May throw.
  virtual std::vector<Reading> read(PictureFeatures& features) = 0;

  /// What reading there costs, about, where there is no code: in pixels of a picture in which matrix codes
  /// are looked for once. What it takes to find things in the scene is not counted.
  virtual double cost(PictureFeatures& features) const = 0;
};

}  // namespace nivlo
