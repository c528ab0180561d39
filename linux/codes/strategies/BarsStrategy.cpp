#include "linux/codes/strategies/BarsStrategy.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include <libyuv/scale.h>

#include "linux/codes/bars/Deskew.hpp"
#include "linux/codes/picture/PerspectiveMap.hpp"

namespace nivlo {

namespace {

// Room for the quiet zones, and for bars that a reflection hides from the finder.
constexpr double kMargin = 0.15;
constexpr double kLeastMargin = 10;
// A code that is wider as it is needs no enlarging.
constexpr double kMostEnlargedColumns = 800;
constexpr int kMostColumns = 1600;
constexpr int kMostRows = 320;
// Each row is the mean of as many as this.
constexpr int kRowsAveraged = 4;
// Of a pixel.
constexpr double kCostOfDrawing = 1;

Quad withMargins(const Quad& region) {
  const double length = distanceBetween(region[0], region[1]);
  const double margin = kMargin * length + kLeastMargin;
  const CGPoint by{(region[1].x - region[0].x) / length * margin,
                   (region[1].y - region[0].y) / length * margin};
  return {{{region[0].x - by.x, region[0].y - by.y},
           {region[1].x + by.x, region[1].y + by.y},
           {region[2].x + by.x, region[2].y + by.y},
           {region[3].x - by.x, region[3].y - by.y}}};
}

}  // namespace

BarsStrategy::BarsStrategy(BarsRendering rendering, Decoder decoder)
    : rendering_(rendering), decoder_(std::move(decoder)) {}

std::vector<Reading> BarsStrategy::read(PictureFeatures& features) {
  std::vector<Reading> readings;
  for (const Quad& bars : features.bars()) {
    const Quad region = withMargins(rendering_.isDeskewed ? deskewed(features.picture(), bars) : bars);
    const LumaPicture upright = rendered(features.picture(), region);
    const PerspectiveMap toPicture(upright.width, upright.height, region);
    for (Reading& reading : decoder_.read(upright)) {
      reading.outline = toPicture(reading.outline);
      readings.push_back(std::move(reading));
    }
  }
  return readings;
}

double BarsStrategy::cost(PictureFeatures& features) const {
  double pixels = 0;
  for (const Quad& bars : features.bars()) {
    const Size size = sizeOf(withMargins(bars));
    pixels += kCostOfDrawing * size.width * size.rowsAveraged + decoder_.cost(size.width, size.rows);
  }
  return pixels;
}

BarsStrategy::Size BarsStrategy::sizeOf(const Quad& region) const {
  const double length = distanceBetween(region[0], region[1]);
  const double height = distanceBetween(region[0], region[3]);
  const double columns = std::min(length * rendering_.scale, std::max(length, kMostEnlargedColumns));
  const int available = std::clamp(static_cast<int>(height), 4, kMostRows);
  const int rows = std::min(rendering_.rows, available);
  return {std::clamp(static_cast<int>(columns), 16, kMostColumns), rows,
          std::min(rows * kRowsAveraged, available)};
}

LumaPicture BarsStrategy::rendered(const LumaPicture& picture, const Quad& region) {
  const auto [width, rows, rowsAveraged] = sizeOf(region);
  rectify(picture, region, width, rowsAveraged, upright_);
  LumaPicture upright = upright_.picture();
  if (rows < rowsAveraged) {
    averaged_.resize(width, rows);
    libyuv::ScalePlane(upright.pixels, upright.stride, width, rowsAveraged, averaged_.row(0), width, width,
                       rows, libyuv::kFilterBox);
    upright = averaged_.picture();
  }
  return enhanced(upright, rendering_.enhancement, enhanced_);
}

}  // namespace nivlo
