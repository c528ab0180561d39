// The optional check character of Code 39.
#pragma once

#include <string_view>

namespace nivlo {

/// Whether the text's last character is the modulo-43 check of those before it, of which there must be one at
/// least. A text without a check character passes by chance once in 43.
bool endsInMod43Check(std::string_view text);

}  // namespace nivlo
