// The driver that writes to the clipboard.
#pragma once

#include <string>

namespace nivlo {

/// The clipboard of the desktop. Main thread only.
class PasteboardDriver {
 public:
  virtual ~PasteboardDriver() = default;

  /// Replaces the clipboard's content by exactly this text, which is UTF-8.
  virtual void setString(const std::string& text) = 0;
};

}  // namespace nivlo
