// The two parts of Code 39 that the symbol itself does not announce: its check character and full ASCII.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nivlo {

/// Returns whether the last character is the modulo-43 check character of those before it. False for a text
/// of fewer than two characters, or with one that Code 39 does not have. One in 43 texts without a check
/// character passes by chance.
bool endsInMod43Check(std::string_view text);

/// Decodes the full-ASCII variant of Code 39 (ISO/IEC 16388), in which $, %, / or + followed by a letter
/// stand for one character. Returns nothing if the text is not full ASCII: if it has no such pair, has one of
/// the four signs without a matching letter, or begins with a +, which marks a label of the health industry.
std::optional<std::string> fullASCII(std::string_view text);

}  // namespace nivlo
