#include "linux/codes/TurnedStrategy.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace nivlo {

namespace {

// Turning costs more a pixel than reading does.
constexpr double kMostTurnedPixels = 1280 * 720;
constexpr std::uint8_t kOutside = 255;
constexpr int kFixedPointBits = 16;
constexpr double kFixedPointOne = 1 << kFixedPointBits;

/// Between the four pixels around a place given in fixed point, which must have a right and a lower
/// neighbour.
std::uint8_t interpolated(const LumaPicture& picture, std::int64_t x, std::int64_t y) {
  const std::uint8_t* upper = picture.row(static_cast<int>(y >> kFixedPointBits)) + (x >> kFixedPointBits);
  const std::uint8_t* lower = upper + picture.stride;
  const int right = static_cast<int>(x >> (kFixedPointBits - 8)) & 0xff;
  const int down = static_cast<int>(y >> (kFixedPointBits - 8)) & 0xff;
  const int above = upper[0] * (256 - right) + upper[1] * right;
  const int below = lower[0] * (256 - right) + lower[1] * right;
  return static_cast<std::uint8_t>((above * (256 - down) + below * down) >> 16);
}

}  // namespace

TurnedStrategy::TurnedStrategy(double degrees, std::unique_ptr<ReadingStrategy> inner)
    : cosine_(std::cos(degrees * std::numbers::pi / 180)),
      sine_(std::sin(degrees * std::numbers::pi / 180)),
      inner_(std::move(inner)) {}

std::vector<Reading> TurnedStrategy::read(const LumaPicture& picture) {
  const double pixels = static_cast<double>(picture.width) * picture.height;
  const double scale = std::min(1.0, std::sqrt(kMostTurnedPixels / pixels));
  turn(picture, scale);
  std::vector<Reading> readings = inner_->read(turned_.picture());
  const LumaPicture turned = turned_.picture();
  for (Reading& reading : readings) {
    for (CGPoint& corner : reading.outline) {
      const double x = (corner.x - turned.width / 2.0) / scale;
      const double y = (corner.y - turned.height / 2.0) / scale;
      corner = {picture.width / 2.0 + cosine_ * x + sine_ * y,
                picture.height / 2.0 - sine_ * x + cosine_ * y};
    }
  }
  return readings;
}

void TurnedStrategy::turn(const LumaPicture& picture, double scale) {
  const int width = std::max(1, static_cast<int>(picture.width * scale));
  const int height = std::max(1, static_cast<int>(picture.height * scale));
  turned_.resize(width, height);
  const auto stepX = static_cast<std::int64_t>(cosine_ / scale * kFixedPointOne);
  const auto stepY = static_cast<std::int64_t>(-sine_ / scale * kFixedPointOne);
  const std::int64_t endX = static_cast<std::int64_t>(picture.width - 1) << kFixedPointBits;
  const std::int64_t endY = static_cast<std::int64_t>(picture.height - 1) << kFixedPointBits;
  for (int row = 0; row < height; ++row) {
    const double fromX = -width / 2.0 / scale;
    const double fromY = (row - height / 2.0) / scale;
    auto x =
        static_cast<std::int64_t>((picture.width / 2.0 + cosine_ * fromX + sine_ * fromY) * kFixedPointOne);
    auto y =
        static_cast<std::int64_t>((picture.height / 2.0 - sine_ * fromX + cosine_ * fromY) * kFixedPointOne);
    std::uint8_t* out = turned_.row(row);
    for (int column = 0; column < width; ++column, x += stepX, y += stepY)
      out[column] = x >= 0 && y >= 0 && x < endX && y < endY ? interpolated(picture, x, y) : kOutside;
  }
}

}  // namespace nivlo
