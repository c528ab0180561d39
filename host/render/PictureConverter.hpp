// Camera frames to pixels that a screen shows.
#pragma once

#include <cstdint>
#include <vector>

#include "host/render/Pixels.hpp"
#include "platform/AVFoundation/CaptureFrame.hpp"

namespace nivlo {

/// Pixels of the upright picture.
struct PictureSize {
  int width = 0;
  int height = 0;
  bool operator==(const PictureSize&) const = default;
};

/// The size of the frame's picture once it has been turned upright.
PictureSize uprightSize(const PictureGeometry& geometry);

/// Converts by the frame's own colorimetry, turns it upright and mirrors it where it is to be mirrored, in
/// one pass over the target. Keeps its scratch memory between frames. Not thread-safe.
class PictureConverter {
 public:
  /// The target has the upright picture's size.
  void convert(const CaptureFrame& frame, PixelsView target);

 private:
  Pixels strip_;
  Pixels turnedStrip_;
  std::vector<std::uint8_t> chroma_;
};

}  // namespace nivlo
