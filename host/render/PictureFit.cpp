#include "host/render/PictureFit.hpp"

namespace nivlo {

std::optional<PictureFit> fitPicture(PictureSize picture, AVLayerVideoGravity gravity, CGRect rect,
                                     CGSize surface) {
  const auto toRect = pictureToLayer({picture.width, picture.height}, rect.size, gravity);
  const double scale = toRect.a;
  const CGRect whole{{rect.origin.x + toRect.tx, rect.origin.y + toRect.ty},
                     {scale * picture.width, scale * picture.height}};
  const CGRect seen = CGRectIntersection(CGRectIntersection(whole, rect), {{0, 0}, surface});
  if (!(scale > 0) || seen.size.width <= 0 || seen.size.height <= 0) {
    return std::nullopt;
  }
  return PictureFit{{{(seen.origin.x - whole.origin.x) / scale, (seen.origin.y - whole.origin.y) / scale},
                     {seen.size.width / scale, seen.size.height / scale}},
                    seen};
}

}  // namespace nivlo
