// The outline of a PDF417 that has no stop pattern.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// ZXing says where such a code begins and not where it ends. This follows its rows from the left edge, at
/// right angles to it, until more paper comes than any row holds.
Quad compactPDF417Outline(const LumaPicture& picture, CGPoint topLeft, CGPoint bottomLeft);

}  // namespace nivlo
