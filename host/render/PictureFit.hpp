// The visible part of a picture, and its place on the surface.
#pragma once

#include <optional>

#include "host/render/PictureConverter.hpp"
#include "platform/AVFoundation/PictureGeometry.hpp"

namespace nivlo {

struct PictureFit {
  CGRect source;       ///< in pixels of the upright picture
  CGRect destination;  ///< on the surface
};

/// A rectangle of whole pixels.
struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const PixelRect&) const = default;
};

/// Rounds each edge to the nearest pixel, so that adjoining rectangles neither overlap nor leave a gap.
PixelRect toPixels(CGRect rect);

/// Rounds a part of a picture to pixels that lie within the picture; at least one, however small the part is.
PixelRect toPixels(CGRect part, PictureSize picture);

/// Fits an upright picture into a rectangle of a surface and clips it to both. Empty if nothing of the
/// picture is visible.
std::optional<PictureFit> fitPicture(PictureSize picture, AVLayerVideoGravity gravity, CGRect rect,
                                     CGSize surface);

}  // namespace nivlo
