// Straightens a region of bars.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Returns the region turned about its centre by up to 7 degrees, so that its bars run as straight down it as
/// possible. The direction that findBars reports is some degrees off where a region holds more than bars, as
/// PDF417 does.
Quad deskewed(const LumaPicture& picture, const Quad& region);

}  // namespace nivlo
