// The program that runs, and the notifications that it posts.
#pragma once

#include <optional>

#include "platform/Foundation/NSURL.hpp"

namespace nivlo {

// All of these are posted on the main thread, without an object.

/// The session is in the foreground again, and the wallpaper can be seen.
inline constexpr auto UIApplicationWillEnterForegroundNotification =
    "UIApplicationWillEnterForegroundNotification";
/// The session is locked, another user's session is on the screen, or the machine is about to sleep.
inline constexpr auto UIApplicationDidEnterBackgroundNotification =
    "UIApplicationDidEnterBackgroundNotification";
/// Follows each UIApplicationWillEnterForegroundNotification.
inline constexpr auto UIApplicationDidBecomeActiveNotification = "UIApplicationDidBecomeActiveNotification";
/// A new day has begun, or the clock or the time zone was changed. Local time follows the new zone already.
inline constexpr auto UIApplicationSignificantTimeChangeNotification =
    "UIApplicationSignificantTimeChangeNotification";

/// The services of the program for a wallpaper. Main thread only.
class UIApplication {
 public:
  /// The one application of the process.
  static UIApplication& sharedApplication();

  /// Returns whether the desktop has a program that opens such links and the link is safe to open. False for
  /// an absent link.
  bool canOpenURL(const std::optional<NSURL>& url) const;
  /// Opens the link with that program, without waiting for it to start. Returns false, and opens nothing, for
  /// a link that canOpenURL refuses.
  bool openURL(const std::optional<NSURL>& url) const;
};

}  // namespace nivlo
