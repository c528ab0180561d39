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

/// How an upright picture lies in a rectangle of a surface, cut off at the rectangle's and the surface's
/// edges; nothing where none of it is seen.
std::optional<PictureFit> fitPicture(PictureSize picture, AVLayerVideoGravity gravity, CGRect rect,
                                     CGSize surface);

}  // namespace nivlo
