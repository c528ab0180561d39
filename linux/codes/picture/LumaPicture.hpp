// The brightness of a picture, which is all that decoders use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "linux/codes/picture/Quad.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// 8-bit luma in memory that somebody else owns, one byte per pixel. Width and height are positive, and
/// `stride * height` fits an int.
struct LumaPicture {
  const std::uint8_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;  ///< bytes from one row to the next

  const std::uint8_t* row(int y) const { return pixels + static_cast<std::ptrdiff_t>(y) * stride; }
};

/// Luma in memory of its own, which is reused from one picture to the next.
class LumaBuffer {
 public:
  /// Makes room for `width` by `height` pixels and leaves their values undefined. Both must be positive.
  void resize(int width, int height);
  void copyFrom(const LumaPicture& picture);
  /// Sets every pixel of the quad to `value`. The quad may reach beyond the picture.
  void fill(const Quad& quad, std::uint8_t value);

  std::uint8_t* row(int y) { return pixels_.data() + static_cast<std::size_t>(y) * width_; }
  /// Valid until the next resize.
  LumaPicture picture() const { return {pixels_.data(), width_, height_, width_}; }

 private:
  std::vector<std::uint8_t> pixels_;
  int width_ = 0;
  int height_ = 0;
};

/// Returns the frame's luma, in place when the frame has a luma plane, else converted into `buffer`. Returns
/// nothing for a frame that holds no picture: without memory or pixels, with rows longer than their stride,
/// or with a size that does not fit an int. The result is valid while both the frame and the buffer's content
/// are.
std::optional<LumaPicture> lumaOf(const VideoFrame& frame, LumaBuffer& buffer);

}  // namespace nivlo
