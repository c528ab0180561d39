// The outline of a compact PDF417, which has no stop pattern.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Returns the outline of a compact PDF417, for which ZXing reports the left edge but no right edge. Follows
/// the rows at right angles to the left edge until a light stretch comes that is too wide for any row, or the
/// picture ends. If both corners are the same point, so are all four of the outline.
Quad compactPDF417Outline(const LumaPicture& picture, CGPoint topLeft, CGPoint bottomLeft);

}  // namespace nivlo
