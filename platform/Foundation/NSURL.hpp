// URLs: links, and the addresses of files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace nivlo {

/// An absolute URL. Immutable.
class NSURL {
 public:
  /// Makes a URL of exactly these bytes or, where RFC 3986 (section 2) does not allow some of them, the URL
  /// that a browser would make of the text. Absent when a browser would not take it for one: it must begin
  /// with a scheme, and where that scheme needs a host, as https does, have a valid one.
  static std::optional<NSURL> URLWithString(std::string_view text);

  /// Makes the file URL of an absolute path. Every byte but "/" and the characters that RFC 3986 calls
  /// unreserved is escaped.
  static NSURL fileURLWithPath(const std::filesystem::path& path);

  /// The URL's text.
  const std::string& absoluteString() const { return text_; }
  /// The scheme in lower case and without its colon, for example "https".
  std::string scheme() const;
  /// The path that a file URL without a host stands for. Absent for any other URL.
  std::optional<std::filesystem::path> filePath() const;

 private:
  explicit NSURL(std::string text) : text_(std::move(text)) {}
  std::string text_;
};

}  // namespace nivlo
