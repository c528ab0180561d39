#include "platform/UIKit/UIPasteboard.hpp"

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

UIPasteboard& UIPasteboard::generalPasteboard() {
  static UIPasteboard pasteboard;
  return pasteboard;
}

void UIPasteboard::setString(const std::string& text) const {
  if (const auto& pasteboard = drivers().pasteboard) {
    pasteboard->setString(text);
  }
}

}  // namespace nivlo
