// The direction in which a text is read.
#pragma once

#include <string_view>

namespace nivlo {

/// Returns whether the first letter of a text that has a direction is one of a script that is read from right
/// to left (rules P2 and P3 of UAX #9, but for isolates). False if there is no such letter before the first
/// byte that is not UTF-8.
bool readsRightToLeft(std::string_view text);

}  // namespace nivlo
