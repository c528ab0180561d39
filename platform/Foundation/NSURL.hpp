// Links.
#pragma once

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

  const std::string& absoluteString() const { return text_; }
  /// In lower case, without the colon.
  std::string scheme() const;

 private:
  explicit NSURL(std::string text) : text_(std::move(text)) {}
  std::string text_;
};

}  // namespace nivlo
