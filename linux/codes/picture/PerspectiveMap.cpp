#include "linux/codes/picture/PerspectiveMap.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace nivlo {

namespace {

constexpr int kFractionBits = 16;
constexpr double kOne = 1 << kFractionBits;
// Pixels between exactly mapped positions; in between, the map is as good as linear.
constexpr int kSpan = 16;

/// Interpolates between the four pixels around a fixed-point position. Repeats the border beyond it.
std::uint8_t interpolated(const LumaPicture& picture, std::int64_t x, std::int64_t y) {
  x = std::clamp<std::int64_t>(x, 0, (static_cast<std::int64_t>(picture.width - 1) << kFractionBits) - 1);
  y = std::clamp<std::int64_t>(y, 0, (static_cast<std::int64_t>(picture.height - 1) << kFractionBits) - 1);
  const std::uint8_t* upper = picture.row(static_cast<int>(y >> kFractionBits)) + (x >> kFractionBits);
  const std::uint8_t* lower = upper + picture.stride;
  const int right = static_cast<int>(x >> (kFractionBits - 8)) & 0xff;
  const int down = static_cast<int>(y >> (kFractionBits - 8)) & 0xff;
  const int above = upper[0] * (256 - right) + upper[1] * right;
  const int below = lower[0] * (256 - right) + lower[1] * right;
  return static_cast<std::uint8_t>((above * (256 - down) + below * down) >> 16);
}

std::int64_t fixedPoint(double position) {
  constexpr double kFarthest = 1 << 24;
  // A quad that reaches the horizon has points that lie nowhere.
  if (std::isnan(position)) {
    return 0;
  }
  return static_cast<std::int64_t>((std::clamp(position, -kFarthest, kFarthest) - 0.5) * kOne);
}

}  // namespace

PerspectiveMap::PerspectiveMap(double width, double height, const Quad& quad) {
  const auto& [a, b, c, d] = quad;
  const CGPoint toB{b.x - c.x, b.y - c.y};
  const CGPoint toD{d.x - c.x, d.y - c.y};
  const CGPoint skew{a.x - b.x + c.x - d.x, a.y - b.y + c.y - d.y};
  const double area = toB.x * toD.y - toD.x * toB.y;
  const double wx = area == 0 ? 0 : (skew.x * toD.y - toD.x * skew.y) / area;
  const double wy = area == 0 ? 0 : (toB.x * skew.y - skew.x * toB.y) / area;
  xx_ = (b.x - a.x + wx * b.x) / width;
  yx_ = (b.y - a.y + wx * b.y) / width;
  wx_ = wx / width;
  xy_ = (d.x - a.x + wy * d.x) / height;
  yy_ = (d.y - a.y + wy * d.y) / height;
  wy_ = wy / height;
  x0_ = a.x;
  y0_ = a.y;
}

CGPoint PerspectiveMap::operator()(CGPoint point) const {
  const double depth = wx_ * point.x + wy_ * point.y + 1;
  return {(xx_ * point.x + xy_ * point.y + x0_) / depth, (yx_ * point.x + yy_ * point.y + y0_) / depth};
}

CGPoint PerspectiveMap::inverse(CGPoint point) const {
  // Solves two linear equations, one for each coordinate that the map must yield.
  const double a = xx_ - wx_ * point.x, b = xy_ - wy_ * point.x, e = point.x - x0_;
  const double c = yx_ - wx_ * point.y, d = yy_ - wy_ * point.y, f = point.y - y0_;
  const double determinant = a * d - b * c;
  return {(e * d - b * f) / determinant, (a * f - e * c) / determinant};
}

Quad PerspectiveMap::operator()(const Quad& quad) const {
  return {(*this)(quad[0]), (*this)(quad[1]), (*this)(quad[2]), (*this)(quad[3])};
}

void rectify(const LumaPicture& picture, const Quad& quad, int width, int height, LumaBuffer& rectified) {
  const PerspectiveMap map(width, height, quad);
  rectified.resize(width, height);
  if (picture.width < 2 || picture.height < 2) {
    for (int y = 0; y < height; ++y) {
      std::fill_n(rectified.row(y), width, picture.pixels[0]);
    }
    return;
  }
  for (int y = 0; y < height; ++y) {
    std::uint8_t* out = rectified.row(y);
    for (int from = 0; from < width; from += kSpan) {
      const CGPoint start = map(CGPoint{from + 0.5, y + 0.5});
      const CGPoint end = map(CGPoint{from + kSpan + 0.5, y + 0.5});
      std::int64_t u = fixedPoint(start.x);
      std::int64_t v = fixedPoint(start.y);
      const std::int64_t stepU = (fixedPoint(end.x) - u) / kSpan;
      const std::int64_t stepV = (fixedPoint(end.y) - v) / kSpan;
      for (int x = from; x < std::min(from + kSpan, width); ++x, u += stepU, v += stepV) {
        out[x] = interpolated(picture, u, v);
      }
    }
  }
}

}  // namespace nivlo
