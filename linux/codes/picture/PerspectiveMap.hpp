// From a rectified view back to the place in the picture that it shows.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Maps a rectangle onto a convex quad; straight lines stay straight.
class PerspectiveMap {
 public:
  /// The rectangle from (0, 0) to (width, height), whose corners, clockwise from the top left, come to lie on
  /// the quad's.
  PerspectiveMap(double width, double height, const Quad& quad);

  CGPoint operator()(CGPoint point) const;
  Quad operator()(const Quad& quad) const;

  /// The place of the rectangle that lies there; undefined where the quad has no area.
  CGPoint inverse(CGPoint point) const;

 private:
  double xx_, xy_, x0_;
  double yx_, yy_, y0_;
  double wx_, wy_;
};

/// Draws the quad's content as an upright rectangle, interpolated. What lies outside the picture repeats its
/// border; of a picture that is a pixel wide or high only its first is seen.
void rectify(const LumaPicture& picture, const Quad& quad, int width, int height, LumaBuffer& rectified);

}  // namespace nivlo
