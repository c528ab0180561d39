// Opens links in whatever program is registered for them.
#pragma once

#include <string>

namespace nivlo {

/// Main thread only. `url` is a syntactically valid absolute URL.
class URLOpener {
 public:
  virtual ~URLOpener() = default;

  /// Whether a program is registered for the link's scheme and the scheme is safe to follow from a scanned
  /// code.
  virtual bool canOpenURL(const std::string& url) = 0;

  /// Hands exactly these bytes to the registered program, without waiting for it. Returns whether it was
  /// attempted.
  virtual bool openURL(const std::string& url) = 0;
};

}  // namespace nivlo
