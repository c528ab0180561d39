#include "platform/UIKit/UIApplication.hpp"

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

UIApplication& UIApplication::sharedApplication() {
  static UIApplication application;
  return application;
}

bool UIApplication::canOpenURL(const std::optional<NSURL>& url) const {
  const auto& opener = drivers().urls;
  // The driver also hears of a text that was not a URL, so that it can tell the user.
  const bool canOpen = opener && opener->canOpenURL(url ? url->absoluteString() : "");
  return url && canOpen;
}

bool UIApplication::openURL(const std::optional<NSURL>& url) const {
  const auto& opener = drivers().urls;
  return url && opener && opener->openURL(url->absoluteString());
}

}  // namespace nivlo
