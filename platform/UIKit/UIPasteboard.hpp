// The clipboard that programs share.
#pragma once

#include <string>

namespace nivlo {

/// Main thread only.
class UIPasteboard {
 public:
  static UIPasteboard& generalPasteboard();

  /// Replaces the content with exactly this text.
  void setString(const std::string& text) const;
};

}  // namespace nivlo
