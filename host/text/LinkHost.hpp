// Where a link leads.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace nivlo {

/// Bytes of a text.
struct TextRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// The host of the first link in the text, as a browser takes it: behind user names, which may look like a
/// host, and before the port. Nothing when there is no link, or none that names a host.
std::optional<TextRange> linkHost(std::string_view text);

}  // namespace nivlo
