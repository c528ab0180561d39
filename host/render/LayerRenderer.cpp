#include "host/render/LayerRenderer.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include <libyuv.h>

#include "host/render/PictureFit.hpp"

namespace nivlo {

namespace {

struct SeenPicture {
  CaptureFrame frame;
  PixelRect source;  ///< of the upright picture
  PixelRect seen;    ///< on the target
};

std::vector<SeenPicture> seenPictures(const LaidOutView& view, CGSize target) {
  std::vector<SeenPicture> pictures;
  for (auto& [frame, gravity, rect] : placedPictures(view, target)) {
    const auto size = uprightSize(frame.geometry);
    const auto fit = fitPicture(size, gravity, rect, target);
    const auto seen = toPixels(fit ? fit->seen : CGRect());
    if (seen.width > 0 && seen.height > 0) {
      pictures.push_back({std::move(frame), toPixels(fit->source, size), seen});
    }
  }
  return pictures;
}

}  // namespace

bool LayerRenderer::render(const LaidOutView& view, PixelsView target) {
  constexpr std::uint32_t kBlack = 0xff000000;
  const auto pictures =
      seenPictures(view, {static_cast<double>(target.width), static_cast<double>(target.height)});
  const bool filled = std::any_of(pictures.begin(), pictures.end(), [&](const auto& picture) {
    return picture.seen.width == target.width && picture.seen.height == target.height;
  });
  if (!filled) {
    libyuv::ARGBRect(target.data, target.stride, 0, 0, target.width, target.height, kBlack);
  }
  for (const auto& [frame, source, seen] : pictures) {
    const auto picture = upright(frame);
    libyuv::ARGBScale(picture.at(source.left, source.top), picture.stride, source.width, source.height,
                      target.at(seen.left, seen.top), target.stride, seen.width, seen.height,
                      libyuv::kFilterBilinear);
  }
  return !pictures.empty();
}

PixelsView LayerRenderer::upright(const CaptureFrame& frame) {
  if (converted_.lock() != frame.picture || convertedGeometry_ != frame.geometry) {
    const auto size = uprightSize(frame.geometry);
    upright_.resize(size.width, size.height);
    converter_.convert(frame, upright_.view());
    converted_ = frame.picture;
    convertedGeometry_ = frame.geometry;
  }
  return upright_.view();
}

}  // namespace nivlo
