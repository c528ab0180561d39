// Camera frames to pixels that a screen shows.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/AVFoundation/CaptureFrame.hpp"

namespace nivlo {

/// 32 bits a pixel, bytes in memory B, G, R, unused.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> data;

  int stride() const { return width * 4; }
  /// The old content is lost when the size changes.
  void resize(int newWidth, int newHeight);
};

/// Converts by the frame's own colorimetry, turns it upright and mirrors it where it is to be mirrored. Keeps
/// its buffers between frames. Not thread-safe.
class PictureConverter {
 public:
  /// The upright picture; valid until the next call. Empty for an empty frame.
  const Pixels& convert(const CaptureFrame& frame);

 private:
  Pixels converted_;
  Pixels turned_;
  Pixels mirrored_;
  std::vector<std::uint8_t> chroma_;
};

}  // namespace nivlo
