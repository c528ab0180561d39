// Where the planes of a picture lie in the memory that holds it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo::pipewire {

/// A stretch of memory with one plane, or all planes one behind the other.
struct Block {
  std::span<const std::uint8_t> bytes;
  int stride = 0;  ///< bytes a row of its first plane; 0 when the sender did not say
};

/// The planes of a picture of the given size, of 1 to 8192 pixels each way. Nothing when the blocks are too
/// many, too few or too small for it, or a stride is too short: the blocks come from outside, and no plane
/// reaches beyond them.
std::optional<std::array<Plane, 3>> layPlanes(PixelFormat format, int width, int height,
                                              std::span<const Block> blocks);

}  // namespace nivlo::pipewire
