// How upright bars stand in a region.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// The region turned about its middle, by up to 7 degrees, so that its bars stand as upright in it as they
/// can. The direction that a region of bars is found with errs by some degrees where there is more than bars,
/// as in PDF417.
Quad deskewed(const LumaPicture& picture, const Quad& region);

}  // namespace nivlo
