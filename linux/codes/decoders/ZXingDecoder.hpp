// The one place that calls ZXing.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"

namespace nivlo {

enum class Symbologies {
  All,
  Matrix,
  Linear,
  Bars,  ///< all that consist of bars: Linear and PDF417
  Aztec,
};

enum class Effort {
  Quick,    ///< finds 1-D codes that are large, upright and sharp, and most matrix codes
  Upright,  ///< looks at every row, not at sideways 1-D codes
  Thorough  ///< looks at every row and column
};

/// Reads the ten symbologies and no others. UPC-A is reported as EAN-13 with a leading 0; Code 39 whose check
/// character is right as Code 39 mod 43, with that character. Text that a code marks as being in some
/// character set, or that is recognisably in one, is converted; bytes that are not UTF-8 by themselves are
/// taken as the character set that ZXing guesses (ISO 8859-1 when nothing else fits), so that the text is
/// always valid UTF-8. Throws std::exception.
Decoder zxing(Symbologies symbologies, Effort effort);

}  // namespace nivlo
