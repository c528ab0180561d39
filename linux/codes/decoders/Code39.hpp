// What Code 39 leaves to those who read it: an optional check character, and characters made of two.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nivlo {

/// Whether the text's last character is the modulo-43 check of those before it, of which there must be one at
/// least. A text without a check character passes by chance once in 43.
bool endsInMod43Check(std::string_view text);

/// The text that a code of the full-ASCII kind stands for, in which $, %, / or + and a letter are one
/// character. Nothing where a text is not of that kind: it has no such pair, has one of the four signs
/// elsewhere, or begins with the + by which labels of the health industry are known.
std::optional<std::string> fullASCII(std::string_view text);

}  // namespace nivlo
