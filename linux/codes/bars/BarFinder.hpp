// Finds the regions of a picture that consist of parallel bars.
#pragma once

#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Returns at most three rectangles that hold many edges of one direction, the largest first: 1-D codes and
/// PDF417, but also blinds or lines of print. Edges count as parallel within 15 degrees. Two regions that may
/// be parts of one code are returned joined as well.
///
/// The first edge of a rectangle runs across its bars, within 90 degrees of left to right; whether a code
/// reads forwards along it is not known. Takes about 0.5 ms at 1280x720; larger pictures are reduced first.
std::vector<Quad> findBars(const LumaPicture& picture);

}  // namespace nivlo
