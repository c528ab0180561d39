#include "host/render/PictureFit.hpp"

#include <algorithm>
#include <cmath>

namespace nivlo {

PixelRect toPixels(CGRect rect) {
  const auto left = std::lround(rect.origin.x);
  const auto top = std::lround(rect.origin.y);
  const auto right = std::lround(rect.origin.x + rect.size.width);
  const auto bottom = std::lround(rect.origin.y + rect.size.height);
  return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right - left),
          static_cast<int>(bottom - top)};
}

PixelRect toPixels(CGRect part, PictureSize picture) {
  auto pixels = toPixels(part);
  pixels.left = std::clamp(pixels.left, 0, picture.width - 1);
  pixels.top = std::clamp(pixels.top, 0, picture.height - 1);
  pixels.width = std::clamp(pixels.width, 1, picture.width - pixels.left);
  pixels.height = std::clamp(pixels.height, 1, picture.height - pixels.top);
  return pixels;
}

std::optional<PictureFit> fitPicture(PictureSize picture, AVLayerVideoGravity gravity, CGRect rect,
                                     CGSize surface) {
  const auto toRect = pictureToLayer({picture.width, picture.height}, rect.size, gravity);
  const double scale = toRect.a;
  const CGRect whole{{rect.origin.x + toRect.tx, rect.origin.y + toRect.ty},
                     {scale * picture.width, scale * picture.height}};
  const CGRect visible = CGRectIntersection(CGRectIntersection(whole, rect), {{0, 0}, surface});
  if (!(scale > 0) || visible.size.width <= 0 || visible.size.height <= 0) {
    return std::nullopt;
  }
  return PictureFit{
      {{(visible.origin.x - whole.origin.x) / scale, (visible.origin.y - whole.origin.y) / scale},
       {visible.size.width / scale, visible.size.height / scale}},
      visible};
}

}  // namespace nivlo
