// The outline of a 1-D code of which one scan line is known.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Decoders say where on a scan line a 1-D code begins and ends, not how tall its bars are. This follows the
/// bars from the scan line `start` to `end` (in reading direction) to both sides for as long as the picture
/// repeats itself, leaning with them. The outline is at least a twelfth as tall as it is long, so that it can
/// be drawn and pointed at.
Quad barOutline(const LumaPicture& picture, CGPoint start, CGPoint end);

}  // namespace nivlo
