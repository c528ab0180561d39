#include "platform/UIKit/UIApplication.hpp"

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

UIApplication& UIApplication::sharedApplication() {
  static UIApplication application;
  return application;
}

bool UIApplication::canOpenURL(const std::optional<NSURL>& url) const {
  const auto& opener = drivers().urls;
  return url && opener && opener->canOpenURL(url->absoluteString());
}

bool UIApplication::openURL(const std::optional<NSURL>& url) const {
  const auto& opener = drivers().urls;
  return url && opener && opener->openURL(url->absoluteString());
}

}  // namespace nivlo
