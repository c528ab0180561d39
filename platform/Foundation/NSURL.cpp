#include "platform/Foundation/NSURL.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "platform/Foundation/URLCharacters.hpp"
#include "platform/Foundation/URLRepair.hpp"

namespace nivlo {

namespace {

constexpr std::string_view kFileURLPrefix = "file://";

bool isUnreserved(char c) { return isLetter(c) || isDigit(c) || isOneOf("-._~", c); }

}  // namespace

std::optional<NSURL> NSURL::URLWithString(std::string_view text) {
  auto url = repairedURL(text);
  return url ? std::optional(NSURL(std::move(*url))) : std::nullopt;
}

NSURL NSURL::fileURLWithPath(const std::filesystem::path& path) {
  std::string text(kFileURLPrefix);
  for (const char c : path.native()) {
    text += c == '/' || isUnreserved(c) ? std::string(1, c)
                                        : fmt::format("%{:02X}", static_cast<unsigned char>(c));
  }
  return NSURL(std::move(text));
}

std::optional<std::filesystem::path> NSURL::filePath() const {
  if (!text_.starts_with(std::string(kFileURLPrefix) + "/")) {
    return std::nullopt;
  }
  std::string path;
  for (std::size_t i = kFileURLPrefix.size(); i < text_.size(); ++i) {
    if (text_[i] == '%') {
      if (i + 2 >= text_.size() || !isHexDigit(text_[i + 1]) || !isHexDigit(text_[i + 2])) {
        return std::nullopt;
      }
      path += static_cast<char>(hexValue(text_[i + 1]) * 16 + hexValue(text_[i + 2]));
      i += 2;
    } else {
      path += text_[i];
    }
  }
  return path;
}

std::string NSURL::scheme() const {
  std::string result = text_.substr(0, text_.find(':'));
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return result;
}

}  // namespace nivlo
