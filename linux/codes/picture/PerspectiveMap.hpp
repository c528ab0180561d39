// Takes points of a rectified drawing back to the picture that it was drawn from.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Maps a rectangle onto a convex quad. Straight lines stay straight.
class PerspectiveMap {
 public:
  /// Maps the rectangle from (0, 0) to (width, height). Its corners, clockwise from the top left, become the
  /// corners of the quad.
  PerspectiveMap(double width, double height, const Quad& quad);

  /// Both return what a point, or a quad, of the rectangle is mapped to.
  CGPoint operator()(CGPoint point) const;
  Quad operator()(const Quad& quad) const;

  /// Returns the point of the rectangle that is mapped there; undefined when the quad has no area.
  CGPoint inverse(CGPoint point) const;

 private:
  double xx_, xy_, x0_;
  double yx_, yy_, y0_;
  double wx_, wy_;
};

/// Draws what the quad contains as an upright rectangle, with bilinear interpolation. The picture's border is
/// repeated beyond it. A picture that is one pixel wide or high counts as if all of it were its first pixel.
void rectify(const LumaPicture& picture, const Quad& quad, int width, int height, LumaBuffer& rectified);

}  // namespace nivlo
