// Follows whether the user can see the desktop.
#pragma once

#include <functional>
#include <memory>

namespace nivlo {

/// Follows, for as long as it exists, whether the user's session is in the background: while it is locked,
/// while another user's session is on the screen, and while the machine sleeps. The machine does not go to
/// sleep before the handler has returned.
///
/// The session counts as being in the foreground until the login manager or a screen saver says otherwise.
/// When these cannot be reached, one line in the log says so, and they are looked for again.
class SessionMonitor {
 public:
  virtual ~SessionMonitor() = default;
};

/// `moved` is called when the session goes to the background and when it is in the foreground again, from the
/// main thread's GLib loop. Returns at once. Make and destroy the monitor on the main thread, and do not
/// destroy it within the handler. Never null.
std::unique_ptr<SessionMonitor> makeSessionMonitor(std::function<void(bool inForeground)> moved);

}  // namespace nivlo
