#include "host/render/LayerRenderer.hpp"

#include <algorithm>
#include <cmath>

#include <libyuv.h>

#include "platform/AVFoundation/AVCaptureVideoPreviewLayer.hpp"

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

std::uint8_t* pixelAt(Pixels& pixels, int x, int y) {
  return pixels.data.data() + y * pixels.stride() + x * 4;
}

}  // namespace

bool LayerRenderer::render(const CALayer& root, Pixels& target) {
  constexpr std::uint32_t kBlack = 0xff000000;
  libyuv::ARGBRect(target.data.data(), target.stride(), 0, 0, target.width, target.height, kBlack);
  return renderLayer(root, {}, target);
}

bool LayerRenderer::renderLayer(const CALayer& layer, CGPoint parentOrigin, Pixels& target) {
  const CGRect rect = CGRectOffset(layer.frame(), parentOrigin.x, parentOrigin.y);
  bool drawn = false;
  if (const auto* preview = dynamic_cast<const AVCaptureVideoPreviewLayer*>(&layer)) {
    const auto frame = preview->newestFrame();
    drawn = frame.picture && drawPicture(frame, preview->videoGravity(), rect, target);
  }
  for (const auto& sublayer : layer.sublayers()) {
    drawn = renderLayer(*sublayer, rect.origin, target) || drawn;
  }
  return drawn;
}

/// Scales just the part of the picture that can be seen.
bool LayerRenderer::drawPicture(const CaptureFrame& frame, AVLayerVideoGravity gravity, CGRect rect,
                                Pixels& target) {
  const auto& picture = converter_.convert(frame);
  const PictureGeometry upright{picture.width, picture.height};
  auto toTarget = pictureToLayer(upright, rect.size, gravity);
  toTarget.tx += rect.origin.x;
  toTarget.ty += rect.origin.y;
  const double scale = toTarget.a;
  const CGRect whole{{toTarget.tx, toTarget.ty}, {scale * picture.width, scale * picture.height}};
  const CGRect screen{{0, 0}, {static_cast<double>(target.width), static_cast<double>(target.height)}};
  const auto seen = toPixels(CGRectIntersection(CGRectIntersection(whole, rect), screen));
  if (seen.width <= 0 || seen.height <= 0) {
    return false;
  }
  auto source = toPixels({{(seen.left - whole.origin.x) / scale, (seen.top - whole.origin.y) / scale},
                          {seen.width / scale, seen.height / scale}});
  source.left = std::clamp(source.left, 0, picture.width - 1);
  source.top = std::clamp(source.top, 0, picture.height - 1);
  source.width = std::clamp(source.width, 1, picture.width - source.left);
  source.height = std::clamp(source.height, 1, picture.height - source.top);
  const auto* from = picture.data.data() + source.top * picture.stride() + source.left * 4;
  return libyuv::ARGBScale(from, picture.stride(), source.width, source.height,
                           pixelAt(target, seen.left, seen.top), target.stride(), seen.width, seen.height,
                           libyuv::kFilterBilinear) == 0;
}

}  // namespace nivlo
