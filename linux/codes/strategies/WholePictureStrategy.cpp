#include "linux/codes/strategies/WholePictureStrategy.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

constexpr double kMostEnlargedPixels = 800 * 600;

int atLeastOne(double size) { return std::max(1, static_cast<int>(size)); }

}  // namespace

WholePictureStrategy::WholePictureStrategy(WholePictureView view, Decoder decoder)
    : view_(view), decoder_(std::move(decoder)) {}

std::vector<Reading> WholePictureStrategy::read(Scene& scene) {
  const LumaPicture& picture = scene.picture();
  const LumaPicture view = prepared(picture);
  std::vector<Reading> readings = decoder_.read(view);
  for (Reading& reading : readings) {
    for (CGPoint& corner : reading.outline) {
      corner = {corner.x * picture.width / view.width, corner.y * picture.height / view.height};
    }
  }
  return readings;
}

double WholePictureStrategy::cost(Scene& scene) const {
  const Size size = sizeFor(scene.picture().width, scene.picture().height);
  const double prepared = view_.enhancement == Enhancement::None ? 0 : 0.5;
  return decoder_.cost(size.width, size.height) + prepared * size.width * size.height;
}

WholePictureStrategy::Size WholePictureStrategy::sizeFor(int width, int height) const {
  const double pixels = static_cast<double>(width) * height;
  const double enlarged = std::max(1.0, std::sqrt(kMostEnlargedPixels / pixels));
  const double scale = std::min({view_.scale, enlarged, std::sqrt(view_.mostPixels / pixels)});
  return {atLeastOne(width * scale), std::min(view_.rows, atLeastOne(height * scale))};
}

LumaPicture WholePictureStrategy::prepared(const LumaPicture& picture) {
  const Size size = sizeFor(picture.width, picture.height);
  LumaPicture view = picture;
  if (size.width != picture.width || size.height != picture.height) {
    scaled_.resize(size.width, size.height);
    view = scaled_.picture();
    libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, scaled_.row(0),
                       view.stride, view.width, view.height, libyuv::kFilterBox);
  }
  return enhanced(view, view_.enhancement, enhanced_);
}

}  // namespace nivlo
