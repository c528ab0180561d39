// Foreign text made fit for a terminal.
#pragma once

#include <string>
#include <string_view>

namespace nivlo {

/// The text with everything that a person could not see, or that could move the cursor or reorder the line,
/// written as an escape: \n \r \t, \x1b for other control characters and DEL and for bytes that are not
/// UTF-8, \u202e for C1 controls, bidirectional controls, zero-width characters and line and paragraph
/// separators. All else stays byte for byte, backslashes too, so this cannot be undone.
std::string visibleText(std::string_view text);

}  // namespace nivlo
