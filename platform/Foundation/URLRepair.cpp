#include "platform/Foundation/URLRepair.hpp"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "platform/Foundation/URLCharacters.hpp"

namespace nivlo {

namespace {

constexpr std::array<std::string_view, 5> kNeedingHost{"ftp", "http", "https", "ws", "wss"};
/// The URL Standard's forbidden domain code points, but for control characters.
constexpr std::string_view kNotInHost = " #/:<>?@[\\]^|%\x7f";
constexpr int kHighestPort = 65535;

bool isBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }
bool isURLCharacter(char c) { return isLetter(c) || isDigit(c) || isOneOf("-._~:/?#[]@!$&'()*+,;=%", c); }

bool isScheme(std::string_view text) {
  return !text.empty() && isLetter(text.front()) &&
         std::ranges::all_of(text, [](char c) { return isLetter(c) || isDigit(c) || isOneOf("+-.", c); });
}

bool needsHost(std::string scheme) {
  std::ranges::transform(scheme, scheme.begin(), [](char c) { return isLetter(c) ? c | 0x20 : c; });
  return std::ranges::find(kNeedingHost, scheme) != kNeedingHost.end();
}

std::string withoutBlanks(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isBlank(text.back())) {
    text.remove_suffix(1);
  }
  std::string result(text);
  std::erase_if(result, [](char c) { return isOneOf("\t\r\n", c); });
  return result;
}

/// Puts exactly two slashes before the host, and slashes in place of backslashes up to the query.
std::string withSlashes(std::string rest) {
  std::replace(rest.begin(),
               rest.begin() + static_cast<long>(std::min(rest.find_first_of("?#"), rest.size())), '\\', '/');
  return "//" + rest.substr(std::min(rest.find_first_not_of('/'), rest.size()));
}

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    result += isURLCharacter(c) ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
  }
  return result;
}

bool isPort(std::string_view text) {
  int port = 0;
  for (const char c : text) {
    port = isDigit(c) && port <= kHighestPort ? port * 10 + (c - '0') : kHighestPort + 1;
  }
  return port <= kHighestPort;
}

/// Returns whether a domain or an IPv4 address can stand here, with its escapes resolved.
bool isHostName(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '%' && i + 2 < text.size() && isHexDigit(text[i + 1]) && isHexDigit(text[i + 2])) {
      c = static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]));
      i += 2;
    }
    if ((c >= 0 && c < ' ') || isOneOf(kNotInHost, c)) {
      return false;
    }
  }
  return !text.empty();
}

bool isIPv6Address(std::string_view text) {
  return std::ranges::count(text, ':') >= 2 &&
         std::ranges::all_of(text, [](char c) { return isHexDigit(c) || c == ':' || c == '.'; });
}

/// Checks what stands between the two slashes and the path.
bool isAuthority(std::string_view text, bool needsHost) {
  const auto server = text.substr(text.rfind('@') + 1);
  const auto bracket = server.find(']');
  if (server.starts_with('[')) {
    const auto after = server.substr(std::min(bracket, server.size() - 1) + 1);
    return bracket != std::string_view::npos && isIPv6Address(server.substr(1, bracket - 1)) &&
           (after.empty() || (after.starts_with(':') && isPort(after.substr(1))));
  }
  const auto colon = std::min(server.find(':'), server.size());
  return !needsHost ||
         (isHostName(server.substr(0, colon)) && isPort(server.substr(std::min(colon + 1, server.size()))));
}

}  // namespace

std::optional<std::string> repairedURL(std::string_view text) {
  const auto plain = withoutBlanks(text);
  const auto colon = plain.find(':');
  if (colon == std::string::npos || !isScheme(std::string_view(plain).substr(0, colon))) {
    return std::nullopt;
  }
  const auto scheme = plain.substr(0, colon);
  auto rest = plain.substr(colon + 1);
  const bool hasHost = needsHost(scheme);
  rest = escaped(hasHost ? withSlashes(std::move(rest)) : rest);
  if (rest.starts_with("//") &&
      !isAuthority(std::string_view(rest).substr(2, rest.find_first_of("/?#", 2) - 2), hasHost)) {
    return std::nullopt;
  }
  return scheme + ':' + rest;
}

}  // namespace nivlo
