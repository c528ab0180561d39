// Makes untrusted text safe to print in a terminal.
#pragma once

#include <string>
#include <string_view>

namespace nivlo {

/// Returns the text with escapes in place of everything that a person could not see, or that could move the
/// cursor or reorder the line: \n, \r and \t; \x1b for other control characters, DEL and bytes that are not
/// UTF-8; \u202e for C1 controls, bidirectional controls, zero-width characters, and line and paragraph
/// separators. Everything else stays the same, byte for byte. So do backslashes, so this cannot be undone.
std::string visibleText(std::string_view text);

}  // namespace nivlo
