// What reads a picture that a strategy has prepared.
#pragma once

#include <functional>
#include <vector>

#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo {

/// What costs so much for every pixel.
inline std::function<double(int, int)> costOfPixels(double factor) {
  return [factor](int width, int height) { return factor * width * height; };
}

struct Decoder {
  /// The codes in the picture, with outlines in its pixels. May throw.
  std::function<std::vector<Reading>(const LumaPicture&)> read;
  /// Of reading a picture of that size, where there is no code: in pixels of which matrix codes are looked
  /// for.
  std::function<double(int width, int height)> cost;
};

}  // namespace nivlo
