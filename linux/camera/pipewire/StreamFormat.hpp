// How a camera's pictures are coded, and how one is asked for.
#pragma once

#include <optional>
#include <vector>

#include <spa/pod/builder.h>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo::pipewire {

/// Larger pictures are refused.
inline constexpr int kLargestSize = 8192;

struct StreamFormat {
  bool isJpeg = false;
  PixelFormat pixels = PixelFormat::I420;  ///< meaningless for JPEG, as are the two below
  ColorMatrix matrix = ColorMatrix::BT601;
  ColorRange range = ColorRange::Limited;
  int width = 0;
  int height = 0;
};

/// The formats that can be read, the most welcome first. They live in the builder's memory.
std::vector<const spa_pod*> welcomeFormats(spa_pod_builder& builder);

/// The format that was agreed on; nothing when it cannot be read after all.
std::optional<StreamFormat> parseFormat(const spa_pod* format);

}  // namespace nivlo::pipewire
