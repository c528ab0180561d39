// The clipboard that programs share.
#pragma once

#include <string>

namespace nivlo {

/// The clipboard, as far as a wallpaper needs it: for copying text. Main thread only.
class UIPasteboard {
 public:
  /// The desktop's clipboard.
  static UIPasteboard& generalPasteboard();

  /// Replaces the content by exactly this text, in UTF-8. Does nothing on a machine without a clipboard.
  void setString(const std::string& text) const;
};

}  // namespace nivlo
