// Links.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace nivlo {

class NSURL {
 public:
  /// An absolute URL with these very bytes, or nothing where the text is none: it must begin with a scheme
  /// and hold only the characters that RFC 3986 (sections 2 and 3.1) allows, with every "%" followed by two
  /// hexadecimal digits.
  static std::optional<NSURL> URLWithString(std::string_view text);

  /// The file URL of an absolute path: every byte that RFC 3986 does not leave unreserved is escaped, but for
  /// "/".
  static NSURL fileURLWithPath(const std::filesystem::path& path);

  const std::string& absoluteString() const { return text_; }
  /// In lower case, without the colon.
  std::string scheme() const;
  /// The path that a file URL of this machine stands for; nothing for any other URL.
  std::optional<std::filesystem::path> filePath() const;

 private:
  explicit NSURL(std::string text) : text_(std::move(text)) {}
  std::string text_;
};

}  // namespace nivlo
