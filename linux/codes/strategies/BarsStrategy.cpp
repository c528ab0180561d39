#include "linux/codes/strategies/BarsStrategy.hpp"

#include <algorithm>
#include <utility>

#include <libyuv/scale.h>

#include "linux/codes/bars/Deskew.hpp"
#include "linux/codes/picture/PerspectiveMap.hpp"

namespace nivlo {

namespace {

// Room for the quiet zones, and for bars that a reflection hides from the finder: relative to the region's
// length, plus a number of pixels.
constexpr double kMargin = 0.15;
constexpr double kBaseMargin = 10;
// A region that is wider than this needs no enlarging.
constexpr double kMaxEnlargedColumns = 800;
constexpr int kMaxColumns = 1600;
constexpr int kMaxRows = 320;
// Rows that are drawn for each row of the rendition, which is their mean.
constexpr int kAveragedPerRow = 4;
// Cost of drawing a pixel, in the unit of ReadingStrategy::cost.
constexpr double kCostOfDrawing = 1;

/// Lengthens the region across its bars, at both ends.
Quad withMargins(const Quad& region) {
  const double length = distanceBetween(region[0], region[1]);
  const double margin = kMargin * length + kBaseMargin;
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
    const LumaPicture rendition = rendered(features.picture(), region);
    const PerspectiveMap toPicture(rendition.width, rendition.height, region);
    for (Reading& reading : decoder_.read(rendition)) {
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
    pixels += kCostOfDrawing * size.width * size.averagedRows + decoder_.cost(size.width, size.rows);
  }
  return pixels;
}

BarsStrategy::Size BarsStrategy::sizeOf(const Quad& region) const {
  const double length = distanceBetween(region[0], region[1]);
  const double height = distanceBetween(region[0], region[3]);
  const double columns = std::min(length * rendering_.scale, std::max(length, kMaxEnlargedColumns));
  const int available = std::clamp(static_cast<int>(height), 4, kMaxRows);
  const int rows = std::min(rendering_.maxRows, available);
  return {std::clamp(static_cast<int>(columns), 16, kMaxColumns), rows,
          std::min(rows * kAveragedPerRow, available)};
}

LumaPicture BarsStrategy::rendered(const LumaPicture& picture, const Quad& region) {
  const auto [width, rows, averagedRows] = sizeOf(region);
  rectify(picture, region, width, averagedRows, upright_);
  LumaPicture result = upright_.picture();
  if (rows < averagedRows) {
    averaged_.resize(width, rows);
    libyuv::ScalePlane(result.pixels, result.stride, width, averagedRows, averaged_.row(0), width, width,
                       rows, libyuv::kFilterBox);
    result = averaged_.picture();
  }
  return enhanced(result, rendering_.enhancement, enhanced_);
}

}  // namespace nivlo
