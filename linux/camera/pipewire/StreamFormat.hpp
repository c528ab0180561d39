// The formats of pictures that we ask a camera for, and the one that it chose.
#pragma once

#include <optional>
#include <vector>

#include <spa/pod/builder.h>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// In pixels. Pictures that are wider or higher than this are refused.
inline constexpr int kLongestPictureEdge = 8192;

struct StreamFormat {
  bool isJpeg = false;  ///< motion JPEG; the next four fields then mean nothing
  bool isGrey =
      false;  ///< one plane of luma; `pixels` is then NV12, which it becomes with a plane of no colour
  PixelFormat pixels = PixelFormat::I420;
  ColorMatrix matrix = ColorMatrix::BT601;
  ColorRange range = ColorRange::Limited;
  int width = 0;   ///< pixels
  int height = 0;  ///< pixels
};

/// Returns the formats to ask a camera for, the best first. The formats live in the builder's memory.
std::vector<const spa_pod*> formatsToAskFor(spa_pod_builder& builder);

/// Returns whether this description of formats, as a camera offers it, holds one of colours. Compressed
/// formats count as such.
bool offersColours(const spa_pod* format);

/// The format that the camera chose; nothing when it is one that we cannot read.
std::optional<StreamFormat> parseFormat(const spa_pod* format);

}  // namespace nivlo
