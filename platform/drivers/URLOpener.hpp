// The driver that opens links.
#pragma once

#include <string>

namespace nivlo {

/// Opens links with the programs that the desktop has for them. `url` is a valid absolute URL, or empty where
/// a text was not one. Main thread only.
class URLOpener {
 public:
  virtual ~URLOpener() = default;

  /// Returns whether the desktop has a program for the link's scheme, and the scheme is safe to open from a
  /// scanned code.
  virtual bool canOpenURL(const std::string& url) = 0;

  /// Hands exactly these bytes to that program, without waiting for it to start. Returns false, and opens
  /// nothing, for a link that canOpenURL refuses.
  virtual bool openURL(const std::string& url) = 0;
};

}  // namespace nivlo
