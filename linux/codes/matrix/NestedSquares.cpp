#include "linux/codes/matrix/NestedSquares.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace nivlo {

namespace {

constexpr int kRays = 96;
constexpr double kStep = 0.5;

/// The distances from `centre` at which brightness crosses `threshold`, the first `count` of them.
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

/// The four-sided shape whose outline the points follow, in their order; nothing where they do not follow
/// one.
std::optional<Quad> fittedQuad(const std::vector<CGPoint>& points, CGPoint centre) {
  const int count = static_cast<int>(points.size());
  const auto farthestFrom = [&](CGPoint from) {
    return static_cast<int>(std::max_element(points.begin(), points.end(),
                                             [&](CGPoint a, CGPoint b) {
                                               return distanceBetween(a, from) < distanceBetween(b, from);
                                             }) -
                            points.begin());
  };
  const int first = farthestFrom(centre);
  const int third = farthestFrom(points[first]);
  const auto farthestAside = [&](int from, int to) {
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
  };
  const std::array<int, 4> corners = {first, farthestAside(first, third), third, farthestAside(third, first)};
  std::array<Line, 4> sides;
  for (int i = 0; i < 4; ++i) {
    const int from = corners[i];
    const int length = (corners[(i + 1) % 4] - from + count) % count;
    const int margin = std::max(1, length / 8);
    std::vector<CGPoint> onSide;
    for (int k = margin; k <= length - margin; ++k) {
      onSide.push_back(points[(from + k) % count]);
    }
    if (onSide.size() < 4) {
      return std::nullopt;
    }
    sides[i] = fittedLine(onSide);
    const CGPoint normal{-sides[i].direction.y, sides[i].direction.x};
    double squares = 0;
    for (const CGPoint& point : onSide) {
      const double off = normal.x * (point.x - sides[i].point.x) + normal.y * (point.y - sides[i].point.y);
      squares += off * off;
    }
    const double size = distanceBetween(points[first], points[third]);
    if (std::sqrt(squares / static_cast<double>(onSide.size())) > 0.04 * size) {
      return std::nullopt;
    }
  }
  Quad quad;
  for (int i = 0; i < 4; ++i) {
    const auto corner = intersectionOf(sides[(i + 3) % 4], sides[i]);
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

std::optional<Quad> squareAround(const LumaPicture& picture, CGPoint centre, double threshold, int edge,
                                 double reach) {
  std::vector<CGPoint> points;
  // A diagonal of a square seen aslant is up to three times as long as half its side.
  const double farthest = 3 * reach;
  int lost = 0;
  for (int ray = 0; ray < kRays; ++ray) {
    const double angle = 2 * std::numbers::pi * ray / kRays;
    const CGPoint direction{std::cos(angle), std::sin(angle)};
    const auto distances = crossings(picture, centre, direction, threshold, edge, farthest);
    if (static_cast<int>(distances.size()) < edge) {
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
