#include "host/render/LayerRenderer.hpp"

#include <algorithm>
#include <cmath>

#include <libyuv.h>

#include "host/render/PictureFit.hpp"

namespace nivlo {

namespace {

/// Whole pixels.
struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

PixelRect toPixels(CGRect rect) {
  const auto left = std::lround(rect.origin.x);
  const auto top = std::lround(rect.origin.y);
  const auto right = std::lround(rect.origin.x + rect.size.width);
  const auto bottom = std::lround(rect.origin.y + rect.size.height);
  return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right - left),
          static_cast<int>(bottom - top)};
}

}  // namespace

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
  auto source = toPixels(fit->source);
  source.left = std::clamp(source.left, 0, picture.width - 1);
  source.top = std::clamp(source.top, 0, picture.height - 1);
  source.width = std::clamp(source.width, 1, picture.width - source.left);
  source.height = std::clamp(source.height, 1, picture.height - source.top);
  return libyuv::ARGBScale(picture.at(source.left, source.top), picture.stride, source.width, source.height,
                           target.at(seen.left, seen.top), target.stride, seen.width, seen.height,
                           libyuv::kFilterBilinear) == 0;
}

}  // namespace nivlo
