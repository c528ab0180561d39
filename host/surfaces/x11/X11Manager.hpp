// The window manager.
#pragma once

#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

/// Knows those that follow the window manager conventions that desktops share (EWMH). Main thread only.
class X11Manager {
 public:
  /// The connection must hear of the root window's properties, and outlive this.
  explicit X11Manager(X11Connection& connection) : connection_(connection) { look(); }

  bool isThere() const { return check_ != XCB_NONE; }
  /// Whether it keeps windows of the desktop type below all others, without a frame.
  bool knowsDesktopWindows() const { return knowsDesktopWindows_; }

  /// To be told of every event. Returns whether the answers may have changed.
  bool handle(const xcb_generic_event_t& event);

 private:
  void look();

  X11Connection& connection_;
  xcb_window_t check_ = XCB_NONE;  ///< the window that lives as long as it does
  bool knowsDesktopWindows_ = false;
};

}  // namespace nivlo
