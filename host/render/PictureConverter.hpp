// Converts frames to the pixels that a screen shows.
#pragma once

#include <cstdint>
#include <vector>

#include "host/render/Pixels.hpp"
#include "platform/AVFoundation/CaptureFrame.hpp"

namespace nivlo {

/// In pixels.
struct PictureSize {
  int width = 0;
  int height = 0;
  bool operator==(const PictureSize&) const = default;
};

/// The size of a picture once it has been rotated upright.
PictureSize uprightSize(const PictureGeometry& geometry);

/// Converts a frame with its own colour matrix and range, rotates it upright and mirrors it if its geometry
/// says so, in one pass over the target. Keeps its scratch memory between frames. Not thread-safe.
class PictureConverter {
 public:
  /// Converts the whole frame. The target must have its `uprightSize`.
  void convert(const CaptureFrame& frame, PixelSpan target);

 private:
  Pixels strip_;
  Pixels rotatedStrip_;
  std::vector<std::uint8_t> chroma_;
};

}  // namespace nivlo
