// Finds out where a link leads.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace nivlo {

/// A range of bytes in a text.
struct TextRange {
  std::size_t begin = 0;
  std::size_t end = 0;  ///< the byte after the last one
};

/// Finds the host that a browser would contact for the first link in the text: it stands after the user name,
/// which may look like a host, and before the port. Returns nothing if there is no link, or if the link
/// surely names no host: what other programs than browsers find there may be anything.
std::optional<TextRange> linkHost(std::string_view text);

}  // namespace nivlo
