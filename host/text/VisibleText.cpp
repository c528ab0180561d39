#include "host/text/VisibleText.hpp"

#include <algorithm>
#include <array>

#include <fmt/format.h>
#include <utf8proc.h>

namespace nivlo {

namespace {

struct Range {
  utf8proc_int32_t first;
  utf8proc_int32_t last;
};

constexpr std::array kInvisible = {
    Range{0x80, 0x9f},      // C1 controls
    Range{0x61c, 0x61c},    // Arabic letter mark
    Range{0x200b, 0x200f},  // zero-width characters, left-to-right and right-to-left marks
    Range{0x2028, 0x202e},  // separators, bidirectional embeddings and overrides
    Range{0x2060, 0x2060},  // word joiner
    Range{0x2066, 0x2069},  // bidirectional isolates
    Range{0xfeff, 0xfeff},  // byte order mark
};

std::string visibleControl(unsigned char byte) {
  switch (byte) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return fmt::format("\\x{:02x}", byte);
  }
}

bool isInvisible(utf8proc_int32_t codePoint) {
  return std::any_of(kInvisible.begin(), kInvisible.end(), [codePoint](const Range& range) {
    return codePoint >= range.first && codePoint <= range.last;
  });
}

}  // namespace

std::string visibleText(std::string_view text) {
  std::string visible;
  while (!text.empty()) {
    const auto first = static_cast<unsigned char>(text.front());
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    if (length < 1 || codePoint < 0x20 || codePoint == 0x7f) {
      visible += visibleControl(first);
      text.remove_prefix(1);
      continue;
    }
    visible += isInvisible(codePoint) ? fmt::format("\\u{:04x}", codePoint) : text.substr(0, length);
    text.remove_prefix(length);
  }
  return visible;
}

}  // namespace nivlo
