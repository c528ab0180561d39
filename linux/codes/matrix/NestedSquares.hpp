// Measures squares around a common centre, such as the finder patterns of matrix codes.
#pragma once

#include <optional>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Returns the brightness at a place between pixels, interpolated. Repeats the border beyond the picture.
double lumaAt(const LumaPicture& picture, CGPoint at);

/// Follows rays outwards from `centre`, which all squares contain, to where brightness crosses `threshold`
/// for the `crossing`th time, counted from 1, and fits a quadrilateral to these points. Returns nothing if
/// they do not lie on one. Rays end where a square of half width `reach` would end if it were seen at a
/// slant.
std::optional<Quad> squareAround(const LumaPicture& picture, CGPoint centre, double threshold, int crossing,
                                 double reach);

}  // namespace nivlo
