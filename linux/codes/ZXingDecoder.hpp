// The one place that calls ZXing.
#pragma once

#include <vector>

#include "linux/codes/LumaPicture.hpp"
#include "linux/codes/Reading.hpp"

namespace nivlo {

enum class Symbologies { All, Matrix, Linear };

/// Quick finds what is large, upright and sharp. Thorough looks closer and at sideways codes, at three to
/// four times the price.
enum class Effort { Quick, Thorough };

/// Reads the ten symbologies and no others. UPC-A is reported as EAN-13 with a leading 0; Code 39 whose check
/// character is right as Code 39 mod 43, with that character. Text that a code marks as being in some
/// character set, or that is recognisably in one, is converted; bytes that are not UTF-8 by themselves are
/// taken as the character set that ZXing guesses (ISO 8859-1 when nothing else fits), so that the text is
/// always valid UTF-8. Throws std::exception.
std::vector<Reading> decodeCodes(const LumaPicture& picture, Symbologies symbologies, Effort effort);

}  // namespace nivlo
