#include "host/text/LinkHost.hpp"

#include <algorithm>

namespace nivlo {

namespace {

constexpr std::string_view kSchemeEnd = "://";
// Browsers treat a backslash as a slash, and skip extra slashes.
constexpr std::string_view kSlashes = "/\\";
constexpr std::string_view kAuthorityEnd = "/\\?# \t\r\n";

}  // namespace

std::optional<TextRange> linkHost(std::string_view text) {
  const auto mark = text.find(kSchemeEnd);
  if (mark == std::string_view::npos) {
    return std::nullopt;
  }
  const auto begin = text.find_first_not_of(kSlashes, mark + kSchemeEnd.size());
  if (begin == std::string_view::npos) {
    return std::nullopt;
  }
  const auto authority = text.substr(begin, text.find_first_of(kAuthorityEnd, begin) - begin);
  const auto userEnd = authority.rfind('@');
  const auto hostBegin = userEnd == std::string_view::npos ? 0 : userEnd + 1;
  const auto server = authority.substr(hostBegin);
  const auto addressEnd = server.starts_with('[') ? server.find(']') : 0;
  const auto portMark = addressEnd == std::string_view::npos ? addressEnd : server.find(':', addressEnd);
  const auto size = std::min(portMark, server.size());
  return size == 0 ? std::nullopt : std::optional(TextRange{begin + hostBegin, begin + hostBegin + size});
}

}  // namespace nivlo
