// What reads a picture that a strategy has prepared.
#pragma once

#include <functional>
#include <vector>

#include "linux/codes/LumaPicture.hpp"
#include "linux/codes/Reading.hpp"

namespace nivlo {

struct Decoder {
  /// The codes in the picture, with outlines in its pixels. May throw.
  std::function<std::vector<Reading>(const LumaPicture&)> read;
  /// Where there is no code: 1 for a matrix code's pass of ZXing.
  double costOfPixel = 1;
};

}  // namespace nivlo
