#include "linux/codes/bars/Deskew.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "linux/codes/picture/PerspectiveMap.hpp"

namespace nivlo {

namespace {

constexpr int kColumns = 256;
constexpr int kRows = 32;
// Columns; bars are as wide.
constexpr int kFirstStep = 3;
// Tangent of 7 degrees.
constexpr double kMostLean = 0.12;

/// How strongly columns that lean by so many of them, from the top to the bottom, differ from their
/// neighbours.
double edgesWith(const LumaPicture& view, int lean, int most, std::vector<int>& sums) {
  std::fill(sums.begin(), sums.end(), 0);
  for (int y = 0; y < view.height; ++y) {
    const int shift = lean * (2 * y - view.height) / (2 * view.height);
    const int to = view.width - std::max(0, shift);
    for (int x = std::max(0, -shift); x < to; ++x) {
      sums[x] += view.row(y)[x + shift];
    }
  }
  double edges = 0;
  // Columns near the sides lack some rows.
  for (int x = most; x + 1 < view.width - most; ++x) {
    edges += std::pow(sums[x + 1] - sums[x], 2);
  }
  return edges;
}

/// In columns.
int leanOf(const LumaPicture& view, int most) {
  std::vector<int> sums(view.width);
  int best = 0;
  double bestEdges = edgesWith(view, 0, most, sums);
  const auto tryBetween = [&](int first, int last, int step) {
    for (int lean = first; lean <= last; lean += step) {
      const double edges = edgesWith(view, lean, most, sums);
      if (edges <= bestEdges) {
        continue;
      }
      bestEdges = edges;
      best = lean;
    }
  };
  tryBetween(-most, most, kFirstStep);
  tryBetween(best - kFirstStep + 1, best + kFirstStep - 1, 1);
  return best;
}

}  // namespace

Quad deskewed(const LumaPicture& picture, const Quad& region) {
  const double height = distanceBetween(region[0], region[3]);
  const double column = distanceBetween(region[0], region[1]) / kColumns;
  LumaBuffer view;
  rectify(picture, region, kColumns, kRows, view);
  const int most = static_cast<int>(std::min(kMostLean * height / column, kColumns / 4.0));
  const double angle = std::atan2(leanOf(view.picture(), most) * column, height);
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
