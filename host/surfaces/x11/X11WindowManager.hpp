// The window manager, if there is one.
#pragma once

#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

/// Recognises window managers that follow the Extended Window Manager Hints (EWMH). Main thread only.
class X11WindowManager {
 public:
  /// The connection must receive property changes of the root window and outlive this object.
  explicit X11WindowManager(X11Connection& connection) : connection_(connection) { query(); }

  bool isRunning() const { return check_ != XCB_NONE; }
  /// Returns whether it keeps windows of the desktop type below all others, without a frame.
  bool knowsDesktopWindows() const { return knowsDesktopWindows_; }
  /// Returns whether it is mutter (GNOME) or one of its relatives, such as muffin (Cinnamon). They paint
  /// windows that bypass them above all others, whatever their place in the stack.
  bool isMutter() const { return isMutter_; }

  /// Must be given every event of the connection. Returns whether the answers may have changed.
  bool handle(const xcb_generic_event_t& event);

 private:
  void query();

  X11Connection& connection_;
  xcb_window_t check_ = XCB_NONE;  ///< the window that the manager keeps as a sign of life
  bool knowsDesktopWindows_ = false;
  bool isMutter_ = false;
};

}  // namespace nivlo
