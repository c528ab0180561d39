// Squares around a place, as the finder patterns of matrix codes have them.
#pragma once

#include <optional>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Brightness between pixels; beyond the picture, that of its border.
double lumaAt(const LumaPicture& picture, CGPoint at);

/// Follows rays out from `centre`, which is within all the squares, to where brightness crosses `threshold`
/// for the `edge`th time, and lays a four-sided shape through these places; nothing where they do not lie on
/// one. No ray is followed farther than a square of half width `reach`, seen aslant, goes.
std::optional<Quad> squareAround(const LumaPicture& picture, CGPoint centre, double threshold, int edge,
                                 double reach);

}  // namespace nivlo
