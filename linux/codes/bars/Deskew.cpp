#include "linux/codes/bars/Deskew.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "linux/codes/picture/PerspectiveMap.hpp"

namespace nivlo {

namespace {

// Size in pixels of the drawing in which the bars are straightened.
constexpr int kColumns = 256;
constexpr int kRows = 32;
// Columns between the slants that are tried first. Bars are about as wide, so no maximum is missed.
constexpr int kCoarseStep = 3;
// Tangent of 7 degrees.
constexpr double kMaxSlant = 0.12;

/// Returns how strongly neighbouring columns differ when every column is slanted by `slant` columns from top
/// to bottom, which is most when the columns follow the bars. `sums` is scratch memory, one element per
/// column.
double contrastAt(int slant, const LumaPicture& drawing, int maxSlant, std::vector<int>& sums) {
  std::fill(sums.begin(), sums.end(), 0);
  for (int y = 0; y < drawing.height; ++y) {
    const int shift = slant * (2 * y - drawing.height) / (2 * drawing.height);
    const int to = drawing.width - std::max(0, shift);
    for (int x = std::max(0, -shift); x < to; ++x) {
      sums[x] += drawing.row(y)[x + shift];
    }
  }
  double contrast = 0;
  // The outermost columns lack some rows.
  for (int x = maxSlant; x + 1 < drawing.width - maxSlant; ++x) {
    contrast += std::pow(sums[x + 1] - sums[x], 2);
  }
  return contrast;
}

/// Returns the slant of the bars, in columns from top to bottom.
int slantOf(const LumaPicture& drawing, int maxSlant) {
  std::vector<int> sums(drawing.width);
  int best = 0;
  double bestContrast = contrastAt(0, drawing, maxSlant, sums);
  const auto tryBetween = [&](int first, int last, int step) {
    for (int slant = first; slant <= last; slant += step) {
      const double contrast = contrastAt(slant, drawing, maxSlant, sums);
      if (contrast > bestContrast) {
        bestContrast = contrast;
        best = slant;
      }
    }
  };
  tryBetween(-maxSlant, maxSlant, kCoarseStep);
  tryBetween(best - kCoarseStep + 1, best + kCoarseStep - 1, 1);
  return best;
}

}  // namespace

Quad deskewed(const LumaPicture& picture, const Quad& region) {
  const double height = distanceBetween(region[0], region[3]);
  const double column = distanceBetween(region[0], region[1]) / kColumns;
  LumaBuffer drawing;
  rectify(picture, region, kColumns, kRows, drawing);
  const int maxSlant = static_cast<int>(std::min(kMaxSlant * height / column, kColumns / 4.0));
  const double angle = std::atan2(slantOf(drawing.picture(), maxSlant) * column, height);
  const CGPoint centre = centreOf(region);
  Quad turned = region;
  for (CGPoint& corner : turned) {
    const double x = corner.x - centre.x;
    const double y = corner.y - centre.y;
    corner = {centre.x + std::cos(angle) * x + std::sin(angle) * y,
              centre.y - std::sin(angle) * x + std::cos(angle) * y};
  }
  return turned;
}

}  // namespace nivlo
