#include "linux/codes/WindowStrategy.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

constexpr double kMostEnlargedPixels = 800 * 600;

int atLeastOne(double size) { return std::max(1, static_cast<int>(size)); }

}  // namespace

WindowStrategy::WindowStrategy(Window window, Decoder decoder)
    : window_(window), decoder_(std::move(decoder)) {}

std::vector<Reading> WindowStrategy::read(Scene& scene) {
  const LumaPicture& picture = scene.picture();
  const int width = atLeastOne(picture.width * window_.part);
  const int height = atLeastOne(picture.height * window_.part);
  const int left = (picture.width - width) / 2;
  const int top = (picture.height - height) / 2;
  const LumaPicture view = prepared({picture.row(top) + left, width, height, picture.stride});

  std::vector<Reading> readings = decoder_.read(view);
  for (Reading& reading : readings) {
    for (CGPoint& corner : reading.outline)
      corner = {left + corner.x * width / view.width, top + corner.y * height / view.height};
  }
  return readings;
}

double WindowStrategy::cost(Scene& scene) const {
  const LumaPicture& picture = scene.picture();
  const Size size =
      sizeFor(atLeastOne(picture.width * window_.part), atLeastOne(picture.height * window_.part));
  const double prepared = window_.enhancement == Enhancement::None ? 0 : 0.5;
  return decoder_.cost(size.width, size.height) + prepared * size.width * size.height;
}

WindowStrategy::Size WindowStrategy::sizeFor(int width, int height) const {
  const double pixels = static_cast<double>(width) * height;
  const double enlarged = std::max(1.0, std::sqrt(kMostEnlargedPixels / pixels));
  const double scale = std::min({window_.scale, enlarged, std::sqrt(window_.mostPixels / pixels)});
  return {atLeastOne(width * scale), std::min(window_.rows, atLeastOne(height * scale))};
}

LumaPicture WindowStrategy::prepared(const LumaPicture& part) {
  const Size size = sizeFor(part.width, part.height);
  LumaPicture picture = part;
  if (size.width != part.width || size.height != part.height) {
    scaled_.resize(size.width, size.height);
    picture = scaled_.picture();
    libyuv::ScalePlane(part.pixels, part.stride, part.width, part.height, scaled_.row(0), picture.stride,
                       picture.width, picture.height, libyuv::kFilterBox);
  }
  return enhanced(picture, window_.enhancement, enhanced_);
}

}  // namespace nivlo
