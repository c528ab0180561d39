// Pixels that a screen shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nivlo {

/// Somebody else's pixels: 32 bits each, bytes in memory B, G, R, unused.
struct PixelsView {
  std::uint8_t* data = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;  ///< bytes from a row to the next

  std::uint8_t* at(int x, int y) const {
    return data + static_cast<std::ptrdiff_t>(y) * stride + std::ptrdiff_t{4} * x;
  }
};

/// Pixels that own their memory.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> data;

  int stride() const { return width * 4; }
  PixelsView view() { return {data.data(), width, height, stride()}; }

  /// The old content is lost when the size changes.
  void resize(int newWidth, int newHeight) {
    width = newWidth;
    height = newHeight;
    data.resize(static_cast<std::size_t>(newWidth) * newHeight * 4);
  }
};

}  // namespace nivlo
