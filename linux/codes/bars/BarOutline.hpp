// Traces the outline of a 1-D code of which one scan line is known.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Decoders report where on a scan line a 1-D code begins and ends, but not how tall its bars are. This
/// follows the bars up and down from the scan line, which runs from `start` to `end` in reading direction,
/// for as long as the picture still shows the same bars, even if they lean. The outline is at least a twelfth
/// as tall as it is long, so that it can be drawn and pointed at. If `start` and `end` are the same point, so
/// are all corners.
Quad barOutline(const LumaPicture& picture, CGPoint start, CGPoint end);

}  // namespace nivlo
