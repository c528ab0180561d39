// The places of a picture's planes in a buffer's data blocks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// A stretch of memory that holds one plane of a picture, or all of its planes one after the other.
struct DataBlock {
  std::span<const std::uint8_t> bytes;
  int stride = 0;  ///< bytes from a row of its first plane to the next; 0 when the sender did not say
};

/// Finds the planes of a picture whose width and height are 1 to kLongestPictureEdge pixels. What the blocks
/// say comes from another program and is checked: the result is nothing when there are too many or too few
/// blocks, when one is too small, or when a stride is shorter than a row. No plane reaches beyond its block.
std::optional<std::array<Plane, 3>> layPlanes(PixelFormat format, int width, int height,
                                              std::span<const DataBlock> blocks);

/// Finds the plane of a picture of greys, and adds the second plane that makes it an NV12 picture: one row
/// without colour, which stands for all rows. Otherwise like layPlanes.
std::optional<std::array<Plane, 3>> layGreyPlanes(int width, int height, std::span<const DataBlock> blocks);

}  // namespace nivlo
