// The running program.
#pragma once

#include <optional>

#include "platform/Foundation/NSURL.hpp"

namespace nivlo {

inline constexpr auto UIApplicationWillEnterForegroundNotification =
    "UIApplicationWillEnterForegroundNotification";
inline constexpr auto UIApplicationDidEnterBackgroundNotification =
    "UIApplicationDidEnterBackgroundNotification";
inline constexpr auto UIApplicationDidBecomeActiveNotification = "UIApplicationDidBecomeActiveNotification";
/// The day, the time zone or the clock has changed.
inline constexpr auto UIApplicationSignificantTimeChangeNotification =
    "UIApplicationSignificantTimeChangeNotification";

/// Main thread only.
class UIApplication {
 public:
  static UIApplication& sharedApplication();

  /// Whether a program can be found to open the link. False for no link.
  bool canOpenURL(const std::optional<NSURL>& url) const;
  /// Hands the link over without waiting for it. Returns whether that was attempted.
  bool openURL(const std::optional<NSURL>& url) const;
};

}  // namespace nivlo
