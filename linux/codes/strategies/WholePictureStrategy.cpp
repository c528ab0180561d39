#include "linux/codes/strategies/WholePictureStrategy.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include <libyuv/scale.h>

#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

namespace {

constexpr double kMaxEnlargedPixels = 800 * 600;

int atLeastOne(double size) { return std::max(1, static_cast<int>(size)); }

}  // namespace

WholePictureStrategy::WholePictureStrategy(WholePictureRendering rendering, Decoder decoder)
    : rendering_(rendering), decoder_(std::move(decoder)) {}

std::vector<Reading> WholePictureStrategy::read(PictureFeatures& features) {
  const LumaPicture& picture = features.picture();
  const LumaPicture rendition = rendered(picture);
  std::vector<Reading> readings = decoder_.read(rendition);
  for (Reading& reading : readings) {
    for (CGPoint& corner : reading.outline) {
      corner = {corner.x * picture.width / rendition.width, corner.y * picture.height / rendition.height};
    }
  }
  return readings;
}

double WholePictureStrategy::cost(PictureFeatures& features) const {
  const Size size = sizeFor(features.picture().width, features.picture().height);
  const double costOfEnhancing = rendering_.enhancement == Enhancement::None ? 0 : 0.5;
  return decoder_.cost(size.width, size.height) + costOfEnhancing * size.width * size.height;
}

WholePictureStrategy::Size WholePictureStrategy::sizeFor(int width, int height) const {
  const double pixels = static_cast<double>(width) * height;
  const double enlarged = std::max(1.0, std::sqrt(kMaxEnlargedPixels / pixels));
  const double scale = std::min({rendering_.scale, enlarged, std::sqrt(rendering_.maxPixels / pixels)});
  return {atLeastOne(width * scale), std::min(rendering_.maxRows, atLeastOne(height * scale))};
}

LumaPicture WholePictureStrategy::rendered(const LumaPicture& picture) {
  const Size size = sizeFor(picture.width, picture.height);
  LumaPicture result = picture;
  if (size.width != picture.width || size.height != picture.height) {
    scaled_.resize(size.width, size.height);
    result = scaled_.picture();
    libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, scaled_.row(0),
                       result.stride, result.width, result.height, libyuv::kFilterBox);
  }
  return enhanced(result, rendering_.enhancement, enhanced_);
}

}  // namespace nivlo
