// The clipboard that programs share.
#pragma once

#include <string>

namespace nivlo {

class PasteboardDriver {
 public:
  virtual ~PasteboardDriver() = default;

  /// Replaces the clipboard's content with exactly this text. Main thread only.
  virtual void setString(const std::string& text) = 0;
};

}  // namespace nivlo
