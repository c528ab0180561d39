// The interface of what decodes a picture that a strategy has prepared.
#pragma once

#include <functional>
#include <vector>

#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo {

/// A cost that is proportional to the number of pixels, see Decoder::cost.
inline std::function<double(int, int)> costOfPixels(double factor) {
  return [factor](int width, int height) { return factor * width * height; };
}

/// A function that decodes a picture, with its cost.
struct Decoder {
  /// Returns the codes in the picture, with their outlines in its pixels. May throw std::exception.
  std::function<std::vector<Reading>(const LumaPicture&)> read;
  /// Returns the typical cost of reading a picture of this size in which there is no code. The unit is the
  /// cost of searching one pixel for matrix codes.
  std::function<double(int width, int height)> cost;
};

}  // namespace nivlo
