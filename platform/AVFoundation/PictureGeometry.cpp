#include "platform/AVFoundation/PictureGeometry.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {

namespace {

/// Maps a picture of this size to its upright version. As y grows downwards, a quarter turn counter-clockwise
/// takes the top right corner to the top left.
CGAffineTransform turnUpright(int rotation, double width, double height) {
  switch (rotation) {
    case 90:
      return {0, -1, 1, 0, 0, width};
    case 180:
      return {-1, 0, 0, -1, width, height};
    case 270:
      return {0, 1, -1, 0, height, 0};
    default:
      return {};
  }
}

}  // namespace

PictureGeometry pictureGeometry(const VideoFrame& frame, const PictureTurn& turn) {
  // The mirror comes last, and in a mirror what turns counter-clockwise is seen to turn clockwise.
  const int counterClockwise = turn.mirrored ? turn.clockwise : 360 - turn.clockwise;
  return {frame.width, frame.height, (frame.rotation + counterClockwise) % 360, turn.mirrored};
}

CGAffineTransform pictureToLayer(const PictureGeometry& picture, CGSize layer, AVLayerVideoGravity gravity) {
  if (picture.width <= 0 || picture.height <= 0) {
    return {};
  }
  auto transform = turnUpright(picture.rotation, picture.width, picture.height);
  double width = picture.width;
  double height = picture.height;
  if (picture.rotation % 180 != 0) {
    std::swap(width, height);
  }
  if (picture.mirrored) {
    transform = CGAffineTransformConcat(transform, {-1, 0, 0, 1, width, 0});
  }
  const auto [smaller, larger] = std::minmax({layer.width / width, layer.height / height});
  const double scale = gravity == AVLayerVideoGravity::ResizeAspectFill ? larger : smaller;
  return CGAffineTransformConcat(transform, {scale, 0, 0, scale, (layer.width - scale * width) / 2,
                                             (layer.height - scale * height) / 2});
}

}  // namespace nivlo
