// The brightness of a picture, the only thing that decoders look at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "linux/codes/picture/Quad.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// A view of 8-bit luma, one byte a pixel. Width and height are positive, `stride * height` fits an int.
struct LumaPicture {
  const std::uint8_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;  ///< bytes from a row to the next

  const std::uint8_t* row(int y) const { return pixels + static_cast<std::ptrdiff_t>(y) * stride; }
};

/// Luma with memory of its own, which is kept from one use to the next.
class LumaBuffer {
 public:
  /// Makes it `width` times `height` pixels, whose values are undefined. Both must be positive.
  void resize(int width, int height);
  void copyFrom(const LumaPicture& picture);
  /// Paints the part of the quad that lies in the picture.
  void fill(const Quad& quad, std::uint8_t value);

  std::uint8_t* row(int y) { return pixels_.data() + static_cast<std::size_t>(y) * width_; }
  /// Valid until the next resize.
  LumaPicture picture() const { return {pixels_.data(), width_, height_, width_}; }

 private:
  std::vector<std::uint8_t> pixels_;
  int width_ = 0;
  int height_ = 0;
};

/// The frame's luma, in place where the frame has a plane of it, else converted into `buffer`. Nothing for a
/// frame that holds no picture: no memory, no pixels, rows longer than their stride, or sizes beyond an int's
/// range. Valid as long as both the frame and the buffer's content.
std::optional<LumaPicture> lumaOf(const VideoFrame& frame, LumaBuffer& buffer);

}  // namespace nivlo
