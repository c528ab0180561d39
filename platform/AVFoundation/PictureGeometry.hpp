// The geometry from a camera's picture to a layer. Nothing else turns, mirrors or fits pictures.
#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// The ways of fitting a picture into a layer of different proportions. It is never distorted.
enum class AVLayerVideoGravity {
  ResizeAspect,      ///< the whole picture, with bars beside it or above and below
  ResizeAspectFill,  ///< the whole layer, with the picture's edges cropped
};

/// The size of a picture as the camera delivered it, and how to show it: turned upright first, then mirrored.
struct PictureGeometry {
  int width = 0;          ///< pixels, as delivered
  int height = 0;         ///< pixels, as delivered
  int rotation = 0;       ///< degrees to turn counter-clockwise: 0, 90, 180 or 270
  bool mirrored = false;  ///< exchange left and right of the upright picture, as a mirror does

  bool operator==(const PictureGeometry&) const = default;
};

/// The geometry of a frame that is shown like that.
PictureGeometry pictureGeometry(const VideoFrame& frame, const PictureTurn& turn = {});

/// Maps pixels of the delivered picture to the coordinates of a layer of this size. The identity for a
/// picture without pixels.
CGAffineTransform pictureToLayer(const PictureGeometry& picture, CGSize layer, AVLayerVideoGravity gravity);

}  // namespace nivlo
