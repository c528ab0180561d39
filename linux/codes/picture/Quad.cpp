#include "linux/codes/picture/Quad.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nivlo {

namespace {

/// Returns the least and the greatest position of the quad along the axis.
std::pair<double, double> projection(const Quad& quad, CGPoint axis) {
  double low = HUGE_VAL;
  double high = -HUGE_VAL;
  for (const CGPoint& corner : quad) {
    const double position = corner.x * axis.x + corner.y * axis.y;
    low = std::min(low, position);
    high = std::max(high, position);
  }
  return {low, high};
}

/// Two convex shapes are disjoint exactly when a line along an edge of one of them separates them.
bool hasSeparatingEdge(const Quad& edges, const Quad& other) {
  for (int i = 0; i < 4; ++i) {
    const CGPoint& from = edges[i];
    const CGPoint& to = edges[(i + 1) % 4];
    const CGPoint normal{to.y - from.y, from.x - to.x};
    const auto [low, high] = projection(edges, normal);
    const auto [otherLow, otherHigh] = projection(other, normal);
    if (otherHigh < low || otherLow > high) {
      return true;
    }
  }
  return false;
}

}  // namespace

double distanceBetween(CGPoint first, CGPoint second) {
  return std::hypot(first.x - second.x, first.y - second.y);
}

CGPoint centreOf(const Quad& quad) {
  CGPoint sum;
  for (const CGPoint& corner : quad) {
    sum = {sum.x + corner.x, sum.y + corner.y};
  }
  return {sum.x / 4, sum.y / 4};
}

double areaOf(const Quad& quad) {
  double twice = 0;
  for (int i = 0; i < 4; ++i) {
    const CGPoint& a = quad[i];
    const CGPoint& b = quad[(i + 1) % 4];
    twice += a.x * b.y - b.x * a.y;
  }
  return std::abs(twice) / 2;
}

Quad scaledAboutCentre(const Quad& quad, double factor) {
  const CGPoint centre = centreOf(quad);
  return scaledAndMoved(quad, factor, {centre.x * (1 - factor), centre.y * (1 - factor)});
}

Quad scaledAndMoved(const Quad& quad, double scale, CGPoint offset) {
  Quad result;
  for (int i = 0; i < 4; ++i) {
    result[i] = {quad[i].x * scale + offset.x, quad[i].y * scale + offset.y};
  }
  return result;
}

bool overlap(const Quad& first, const Quad& second) {
  return !hasSeparatingEdge(first, second) && !hasSeparatingEdge(second, first);
}

std::optional<CGPoint> intersectionOf(const Line& first, const Line& second) {
  constexpr double kMinSine = 0.3;
  const double cross = first.direction.x * second.direction.y - first.direction.y * second.direction.x;
  const double lengths =
      std::hypot(first.direction.x, first.direction.y) * std::hypot(second.direction.x, second.direction.y);
  if (std::abs(cross) <= kMinSine * lengths) {
    return std::nullopt;
  }
  const double dx = second.point.x - first.point.x;
  const double dy = second.point.y - first.point.y;
  const double along = (dx * second.direction.y - dy * second.direction.x) / cross;
  return CGPoint{first.point.x + along * first.direction.x, first.point.y + along * first.direction.y};
}

}  // namespace nivlo
