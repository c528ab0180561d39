#include "host/render/LayerRenderer.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include <libyuv.h>

#include "host/render/PictureFit.hpp"

namespace nivlo {

namespace {

struct VisiblePicture {
  CaptureFrame frame;
  PixelRect source;       ///< in the upright picture
  PixelRect destination;  ///< in the target
};

std::vector<VisiblePicture> visiblePictures(const LaidOutView& view, CGSize target) {
  std::vector<VisiblePicture> pictures;
  for (auto& [frame, gravity, rect] : placedPictures(view, target)) {
    const auto size = uprightSize(frame.geometry);
    const auto fit = fitPicture(size, gravity, rect, target);
    const auto destination = toPixels(fit ? fit->destination : CGRect());
    if (destination.width > 0 && destination.height > 0) {
      pictures.push_back({std::move(frame), toPixels(fit->source, size), destination});
    }
  }
  return pictures;
}

}  // namespace

bool LayerRenderer::render(const LaidOutView& view, PixelSpan target) {
  constexpr std::uint32_t kBlack = 0xff000000;
  const auto pictures =
      visiblePictures(view, {static_cast<double>(target.width), static_cast<double>(target.height)});
  const bool filled = std::any_of(pictures.begin(), pictures.end(), [&](const auto& picture) {
    return picture.destination.width == target.width && picture.destination.height == target.height;
  });
  if (!filled) {
    libyuv::ARGBRect(target.data, target.stride, 0, 0, target.width, target.height, kBlack);
  }
  for (const auto& [frame, source, destination] : pictures) {
    const auto picture = upright(frame);
    libyuv::ARGBScale(picture.at(source.left, source.top), picture.stride, source.width, source.height,
                      target.at(destination.left, destination.top), target.stride, destination.width,
                      destination.height, libyuv::kFilterBilinear);
  }
  return !pictures.empty();
}

PixelSpan LayerRenderer::upright(const CaptureFrame& frame) {
  if (converted_.lock() != frame.picture || convertedGeometry_ != frame.geometry) {
    const auto size = uprightSize(frame.geometry);
    upright_.resize(size.width, size.height);
    converter_.convert(frame, upright_.span());
    converted_ = frame.picture;
    convertedGeometry_ = frame.geometry;
  }
  return upright_.span();
}

}  // namespace nivlo
