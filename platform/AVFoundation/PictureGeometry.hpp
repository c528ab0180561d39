// The one place that knows how a camera's picture comes to lie in a layer.
#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

enum class AVLayerVideoGravity {
  ResizeAspect,      ///< the whole picture, with bars where the shapes differ
  ResizeAspectFill,  ///< the layer filled, the picture cropped where the shapes differ
};

/// How a delivered picture is to be shown: turned upright first, then mirrored.
struct PictureGeometry {
  int width = 0;          ///< pixels, as delivered
  int height = 0;         ///< pixels, as delivered
  int rotation = 0;       ///< counter-clockwise, 0, 90, 180 or 270 degrees
  bool mirrored = false;  ///< left and right exchanged in the upright picture, as a mirror shows it

  bool operator==(const PictureGeometry&) const = default;
};

PictureGeometry pictureGeometry(const VideoFrame& frame, bool mirrored);

/// Maps pixels of the delivered picture to the coordinates of a layer of this size.
CGAffineTransform pictureToLayer(const PictureGeometry& picture, CGSize layer, AVLayerVideoGravity gravity);

}  // namespace nivlo
