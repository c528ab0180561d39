#include "host/render/LayerRenderer.hpp"

#include <libyuv.h>

#include "host/render/PictureFit.hpp"

namespace nivlo {

bool LayerRenderer::render(const LaidOutView& view, PixelsView target) {
  constexpr std::uint32_t kBlack = 0xff000000;
  libyuv::ARGBRect(target.data, target.stride, 0, 0, target.width, target.height, kBlack);
  bool drawn = false;
  const CGSize size{static_cast<double>(target.width), static_cast<double>(target.height)};
  for (const auto& [layer, rect] : placedPreviews(view, size)) {
    const auto frame = layer->newestFrame();
    drawn = (frame.picture && drawPicture(frame, layer->videoGravity(), rect, target)) || drawn;
  }
  return drawn;
}

/// Scales just the part of the picture that can be seen.
bool LayerRenderer::drawPicture(const CaptureFrame& frame, AVLayerVideoGravity gravity, CGRect rect,
                                PixelsView target) {
  const auto size = uprightSize(frame.geometry);
  const auto fit = fitPicture(size, gravity, rect,
                              {static_cast<double>(target.width), static_cast<double>(target.height)});
  const auto seen = toPixels(fit ? fit->seen : CGRect());
  if (seen.width <= 0 || seen.height <= 0) {
    return false;
  }
  upright_.resize(size.width, size.height);
  const auto picture = upright_.view();
  converter_.convert(frame, picture);
  const auto source = toPixels(fit->source, size);
  return libyuv::ARGBScale(picture.at(source.left, source.top), picture.stride, source.width, source.height,
                           target.at(seen.left, seen.top), target.stride, seen.width, seen.height,
                           libyuv::kFilterBilinear) == 0;
}

}  // namespace nivlo
