#include "host/text/LinkHost.hpp"

#include <algorithm>
#include <array>
#include <string>

namespace nivlo {

namespace {

constexpr std::string_view kSchemeEnd = "://";
// Browsers treat a backslash as a slash, and skip extra slashes.
constexpr std::string_view kSlashes = "/\\";
constexpr std::string_view kAuthorityEnd = "/\\?# \t\r\n";
constexpr std::array<std::string_view, 5> kBrowserSchemes{"ftp", "http", "https", "ws", "wss"};

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isInScheme(char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.'; }

/// Returns whether browsers open links of the scheme that ends here. They do so only with a host.
bool endsInBrowserScheme(std::string_view text) {
  const auto first = std::find_if_not(text.rbegin(), text.rend(), isInScheme).base();
  std::string scheme(first, text.end());
  std::ranges::transform(scheme, scheme.begin(), [](char c) { return isLetter(c) ? c | 0x20 : c; });
  return std::ranges::find(kBrowserSchemes, scheme) != kBrowserSchemes.end();
}

/// The size of the host at the start of what may also hold a port. Elsewhere than in a browser's links, only
/// a name with a dot and an address in brackets are surely a host: otpauth://totp/ leads nowhere.
std::size_t hostSize(std::string_view server, bool isBrowserLink) {
  if (server.starts_with('[')) {
    return server.find(']') + 1;  // 0 if there is none
  }
  const auto size = std::min(server.find(':'), server.size());
  return isBrowserLink || server.substr(0, size).find('.') != std::string_view::npos ? size : 0;
}

}  // namespace

std::optional<TextRange> linkHost(std::string_view text) {
  const auto mark = text.find(kSchemeEnd);
  if (mark == std::string_view::npos) {
    return std::nullopt;
  }
  const bool isBrowserLink = endsInBrowserScheme(text.substr(0, mark));
  const auto afterMark = mark + kSchemeEnd.size();
  const auto begin = isBrowserLink ? text.find_first_not_of(kSlashes, afterMark) : afterMark;
  if (begin == std::string_view::npos) {
    return std::nullopt;
  }
  const auto authority = text.substr(begin, text.find_first_of(kAuthorityEnd, begin) - begin);
  const auto userEnd = authority.rfind('@');
  const auto hostBegin = userEnd == std::string_view::npos ? 0 : userEnd + 1;
  const auto size = hostSize(authority.substr(hostBegin), isBrowserLink);
  return size == 0 ? std::nullopt : std::optional(TextRange{begin + hostBegin, begin + hostBegin + size});
}

}  // namespace nivlo
