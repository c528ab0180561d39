// When the person looks at the desktop, and when not.
#pragma once

#include <memory>

namespace nivlo {

/// Tells the frameworks, for as long as it exists, when the wallpaper goes to the background: while the
/// session is locked, another user's session is on the screen, or the machine sleeps. It posts
/// UIApplicationDidEnterBackgroundNotification when the first of these begins, and
/// UIApplicationWillEnterForegroundNotification and then UIApplicationDidBecomeActiveNotification when none
/// holds any more. The machine waits with going to sleep until the observers have returned.
///
/// The desktop is taken to be in the foreground until the login manager or a screen saver says otherwise;
/// where there is neither, it stays there, and one line in the log says so. A message bus that goes away is
/// looked for again.
class SessionMonitor {
 public:
  virtual ~SessionMonitor() = default;
};

/// Main thread only, as is the destruction, which must not happen within one of the notifications. Returns at
/// once; everything else happens in the main thread's GLib loop.
std::unique_ptr<SessionMonitor> makeSessionMonitor();

}  // namespace nivlo
