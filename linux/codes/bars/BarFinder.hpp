// Finds where in a picture there are bars, and how they lie.
#pragma once

#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Rectangles that hold many edges of one direction, such as 1-D codes and PDF417 and also blinds or lines of
/// print; the largest first, three at most. Two that may be parts of one code are given as one as well. A
/// rectangle's first side runs across the bars, within 90 degrees of left to right: whether a code reads
/// forwards along it is not known. Edges within a twelfth of a right angle of one direction count as
/// parallel. About 0.5 ms at 1280x720; the detail looked at is bounded.
std::vector<Quad> findBars(const LumaPicture& picture);

}  // namespace nivlo
