// Buffers of the pixels that a screen shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nivlo {

/// Refers to pixels that somebody else owns: 32 bits each, bytes in memory B, G, R, unused.
struct PixelSpan {
  std::uint8_t* data = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;  ///< bytes from a row to the next

  /// The first byte of the pixel.
  std::uint8_t* at(int x, int y) const {
    return data + static_cast<std::ptrdiff_t>(y) * stride + std::ptrdiff_t{4} * x;
  }
};

/// Owns the pixels of a PixelSpan, with no gaps between the rows.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> data;

  int stride() const { return width * 4; }
  /// Valid until the next `resize`.
  PixelSpan span() { return {data.data(), width, height, stride()}; }

  /// Leaves the content undefined if the size changes.
  void resize(int newWidth, int newHeight) {
    width = newWidth;
    height = newHeight;
    data.resize(static_cast<std::size_t>(newWidth) * newHeight * 4);
  }
};

}  // namespace nivlo
