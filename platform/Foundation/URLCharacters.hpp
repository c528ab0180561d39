// The classes of characters that URLs are made of.
#pragma once

#include <string_view>

namespace nivlo {

// The C library's classification depends on the locale; a URL's does not.

inline bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
inline bool isDigit(char c) { return c >= '0' && c <= '9'; }
inline bool isOneOf(std::string_view set, char c) { return set.find(c) != std::string_view::npos; }
inline bool isHexDigit(char c) { return isDigit(c) || isOneOf("abcdefABCDEF", c); }

/// The value of a hexadecimal digit.
inline int hexValue(char c) { return isDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10; }

}  // namespace nivlo
