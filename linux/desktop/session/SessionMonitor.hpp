// When the person looks at the desktop, and when not.
#pragma once

#include <functional>
#include <memory>

namespace nivlo {

/// Tells, for as long as it exists, when the session goes to the background: while it is locked, another
/// user's session is on the screen, or the machine sleeps. It is told when the first of these begins and when
/// none holds any more. The machine waits with going to sleep until the handler has returned.
///
/// The desktop is taken to be in the foreground until the login manager or a screen saver says otherwise;
/// where there is neither, it stays there, and one line in the log says so. A message bus that goes away is
/// looked for again.
class SessionMonitor {
 public:
  virtual ~SessionMonitor() = default;
};

/// Main thread only, as is the destruction, which must not happen within the handler. Returns at once;
/// everything else happens in the main thread's GLib loop.
std::unique_ptr<SessionMonitor> makeSessionMonitor(std::function<void(bool inForeground)> moved);

}  // namespace nivlo
