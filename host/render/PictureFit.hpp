// Which part of a picture is seen where.
#pragma once

#include <optional>

#include "host/render/PictureConverter.hpp"
#include "platform/AVFoundation/PictureGeometry.hpp"

namespace nivlo {

struct PictureFit {
  CGRect source;  ///< in pixels of the upright picture
  CGRect seen;    ///< on the surface
};

/// Whole pixels.
struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const PixelRect&) const = default;
};

/// The nearest whole pixels.
PixelRect toPixels(CGRect rect);

/// The same, of a part of a picture: never empty, never beyond the picture.
PixelRect toPixels(CGRect part, PictureSize picture);

/// How an upright picture lies in a rectangle of a surface, cut off at the rectangle's and the surface's
/// edges; nothing where none of it is seen.
std::optional<PictureFit> fitPicture(PictureSize picture, AVLayerVideoGravity gravity, CGRect rect,
                                     CGSize surface);

}  // namespace nivlo
