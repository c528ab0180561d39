#include "linux/codes/WindowStrategy.hpp"

#include <algorithm>
#include <cmath>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

constexpr double kMostPixels = 1920 * 1080;
constexpr double kMostEnlargedPixels = 1280 * 720;

double boundedScale(double wanted, double pixels) {
  const double enlarged = std::max(1.0, std::sqrt(kMostEnlargedPixels / pixels));
  return std::min({wanted, enlarged, std::sqrt(kMostPixels / pixels)});
}

/// Adds the difference to the mean of each pixel's neighbourhood of 3 x 3. The outermost pixels stay as they
/// are.
void sharpen(const LumaPicture& picture, double amount, LumaBuffer& sharpened) {
  sharpened.copyFrom(picture);
  const int ninths = static_cast<int>(amount * 256 / 9);
  for (int y = 1; y < picture.height - 1; ++y) {
    const std::uint8_t* above = picture.row(y - 1);
    const std::uint8_t* here = picture.row(y);
    const std::uint8_t* below = picture.row(y + 1);
    std::uint8_t* out = sharpened.row(y);
    for (int x = 1; x < picture.width - 1; ++x) {
      const int sum = above[x - 1] + above[x] + above[x + 1] + here[x - 1] + here[x] + here[x + 1] +
                      below[x - 1] + below[x] + below[x + 1];
      out[x] = static_cast<std::uint8_t>(std::clamp(here[x] + ((9 * here[x] - sum) * ninths >> 8), 0, 255));
    }
  }
}

int atLeastOne(double size) { return std::max(1, static_cast<int>(size)); }

}  // namespace

WindowStrategy::WindowStrategy(Window window, Symbologies symbologies, Effort effort)
    : window_(window), symbologies_(symbologies), effort_(effort) {}

std::vector<Reading> WindowStrategy::read(const LumaPicture& picture) {
  const int width = atLeastOne(picture.width * window_.part);
  const int height = atLeastOne(picture.height * window_.part);
  const int left = (picture.width - width) / 2;
  const int top = (picture.height - height) / 2;
  const LumaPicture part{picture.row(top) + left, width, height, picture.stride};
  const double scale = boundedScale(window_.scale, static_cast<double>(width) * height);

  std::vector<Reading> readings = decodeCodes(prepared(part, scale), symbologies_, effort_);
  const CGPoint offset{static_cast<double>(left), static_cast<double>(top)};
  for (Reading& reading : readings) reading.outline = scaledAndMoved(reading.outline, 1 / scale, offset);
  return readings;
}

LumaPicture WindowStrategy::prepared(const LumaPicture& part, double scale) {
  LumaPicture picture = part;
  if (scale != 1) {
    scaled_.resize(atLeastOne(part.width * scale), atLeastOne(part.height * scale));
    picture = scaled_.picture();
    libyuv::ScalePlane(part.pixels, part.stride, part.width, part.height, scaled_.row(0), picture.stride,
                       picture.width, picture.height, libyuv::kFilterBox);
  }
  if (window_.sharpening > 0) {
    sharpen(picture, window_.sharpening, sharpened_);
    picture = sharpened_.picture();
  }
  return picture;
}

}  // namespace nivlo
