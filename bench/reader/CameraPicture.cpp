#include "bench/reader/CameraPicture.hpp"

#include <algorithm>
#include <cstdint>

#include <libyuv/scale.h>

namespace nivlo::bench {

LumaBuffer cameraPicture(const LumaPicture& photo, int width, int height) {
  const double scale =
      std::max(width / static_cast<double>(photo.width), height / static_cast<double>(photo.height));
  const int usedWidth = std::clamp(static_cast<int>(width / scale), 1, photo.width);
  const int usedHeight = std::clamp(static_cast<int>(height / scale), 1, photo.height);
  const std::uint8_t* from = photo.row((photo.height - usedHeight) / 2) + (photo.width - usedWidth) / 2;
  LumaBuffer frame;
  frame.resize(width, height);
  libyuv::ScalePlane(from, photo.stride, usedWidth, usedHeight, frame.row(0), width, width, height,
                     libyuv::kFilterBilinear);
  return frame;
}

}  // namespace nivlo::bench
