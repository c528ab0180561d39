#include "linux/codes/matrix/NestedSquares.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <vector>

namespace nivlo {

namespace {

constexpr int kRays = 96;
// Pixels between the samples along a ray.
constexpr double kStep = 0.5;
// Points that an edge of a quadrilateral is fitted to, and how far they may deviate from it on average,
// relative to the quadrilateral's diagonal.
constexpr std::size_t kMinPointsPerEdge = 4;
constexpr double kMaxDeviation = 0.04;

/// Returns the first `count` distances from `centre` at which brightness crosses `threshold`.
std::vector<double> crossings(const LumaPicture& picture, CGPoint centre, CGPoint direction, double threshold,
                              std::size_t count, double farthest) {
  std::vector<double> result;
  double last = lumaAt(picture, centre) - threshold;
  for (double distance = kStep; distance < farthest && result.size() < count; distance += kStep) {
    const double here =
        lumaAt(picture, {centre.x + direction.x * distance, centre.y + direction.y * distance}) - threshold;
    if ((here < 0) != (last < 0)) {
      result.push_back(distance - kStep * here / (here - last));
    }
    last = here;
  }
  return result;
}

/// Total least squares: minimises the distances at right angles to the line.
Line fittedLine(const std::vector<CGPoint>& points) {
  CGPoint mean;
  for (const CGPoint& point : points) {
    mean = {mean.x + point.x, mean.y + point.y};
  }
  const auto count = static_cast<double>(points.size());
  mean = {mean.x / count, mean.y / count};
  double xx = 0, yy = 0, xy = 0;
  for (const CGPoint& point : points) {
    xx += (point.x - mean.x) * (point.x - mean.x);
    yy += (point.y - mean.y) * (point.y - mean.y);
    xy += (point.x - mean.x) * (point.y - mean.y);
  }
  const double angle = 0.5 * std::atan2(2 * xy, xx - yy);
  return {mean, {std::cos(angle), std::sin(angle)}};
}

int farthestFrom(CGPoint place, const std::vector<CGPoint>& points) {
  const auto farthest = std::max_element(points.begin(), points.end(), [&](CGPoint a, CGPoint b) {
    return distanceBetween(a, place) < distanceBetween(b, place);
  });
  return static_cast<int>(farthest - points.begin());
}

/// Returns which of the points after `from` and before `to` is farthest from the line through these two.
int farthestAside(const std::vector<CGPoint>& points, int from, int to) {
  const int count = static_cast<int>(points.size());
  const CGPoint a = points[from];
  const CGPoint b = points[to];
  double most = -1;
  int best = from;
  for (int i = (from + 1) % count; i != to; i = (i + 1) % count) {
    const double aside = std::abs((b.x - a.x) * (points[i].y - a.y) - (b.y - a.y) * (points[i].x - a.x));
    if (aside > most) {
      most = aside;
      best = i;
    }
  }
  return best;
}

/// Returns the root mean square of the points' distances from the line.
double deviation(const std::vector<CGPoint>& points, const Line& line) {
  const CGPoint normal{-line.direction.y, line.direction.x};
  double squares = 0;
  for (const CGPoint& point : points) {
    const double off = normal.x * (point.x - line.point.x) + normal.y * (point.y - line.point.y);
    squares += off * off;
  }
  return std::sqrt(squares / static_cast<double>(points.size()));
}

/// Fits a line to the points between two corners. Leaves out those close to the corners, about an eighth at
/// either end.
std::optional<Line> edgeBetween(const std::vector<CGPoint>& points, int from, int to, double maxDeviation) {
  const int count = static_cast<int>(points.size());
  const int length = (to - from + count) % count;
  const int margin = std::max(1, length / 8);
  std::vector<CGPoint> onEdge;
  for (int i = margin; i <= length - margin; ++i) {
    onEdge.push_back(points[(from + i) % count]);
  }
  if (onEdge.size() < kMinPointsPerEdge) {
    return std::nullopt;
  }
  const Line edge = fittedLine(onEdge);
  if (deviation(onEdge, edge) > maxDeviation) {
    return std::nullopt;
  }
  return edge;
}

/// Fits a quadrilateral to points that are in order around it. Returns nothing if they do not lie on one.
std::optional<Quad> fittedQuad(const std::vector<CGPoint>& points, CGPoint centre) {
  const int first = farthestFrom(centre, points);
  const int third = farthestFrom(points[first], points);
  const std::array<int, 4> corners{first, farthestAside(points, first, third), third,
                                   farthestAside(points, third, first)};
  const double maxDeviation = kMaxDeviation * distanceBetween(points[first], points[third]);
  std::array<Line, 4> edges;
  for (int i = 0; i < 4; ++i) {
    const auto edge = edgeBetween(points, corners[i], corners[(i + 1) % 4], maxDeviation);
    if (!edge) {
      return std::nullopt;
    }
    edges[i] = *edge;
  }
  Quad quad;
  for (int i = 0; i < 4; ++i) {
    const auto corner = intersectionOf(edges[(i + 3) % 4], edges[i]);
    if (!corner) {
      return std::nullopt;
    }
    quad[i] = *corner;
  }
  return quad;
}

}  // namespace

double lumaAt(const LumaPicture& picture, CGPoint at) {
  const double x = std::clamp(at.x, 0.0, picture.width - 1.001);
  const double y = std::clamp(at.y, 0.0, picture.height - 1.001);
  const int left = static_cast<int>(x);
  const int top = static_cast<int>(y);
  const std::uint8_t* upper = picture.row(top) + left;
  const std::uint8_t* lower = picture.row(std::min(top + 1, picture.height - 1)) + left;
  const int right = left + 1 < picture.width ? 1 : 0;
  const double above = upper[0] + (x - left) * (upper[right] - upper[0]);
  const double below = lower[0] + (x - left) * (lower[right] - lower[0]);
  return above + (y - top) * (below - above);
}

std::optional<Quad> squareAround(const LumaPicture& picture, CGPoint centre, double threshold, int crossing,
                                 double reach) {
  std::vector<CGPoint> points;
  // Seen at a slant, a corner is up to three times as far from the centre as half the width.
  const double farthest = 3 * reach;
  int lost = 0;
  for (int ray = 0; ray < kRays; ++ray) {
    const double angle = 2 * std::numbers::pi * ray / kRays;
    const CGPoint direction{std::cos(angle), std::sin(angle)};
    const auto distances = crossings(picture, centre, direction, threshold, crossing, farthest);
    if (static_cast<int>(distances.size()) < crossing) {
      if (++lost > kRays / 4) {
        return std::nullopt;
      }
      continue;
    }
    points.push_back({centre.x + direction.x * distances.back(), centre.y + direction.y * distances.back()});
  }
  return fittedQuad(points, centre);
}

}  // namespace nivlo
