// The wallpaper's place above another program's desktop.
#pragma once

#include <vector>

#include "host/loop/EventSource.hpp"
#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

/// Keeps windows that bypass the window manager (override-redirect) directly above the desktop windows of
/// other programs, and thus below all others. The window manager restacks the other windows without knowing
/// ours, so the place is checked whenever the order of the root window's children changes. Main thread only.
class X11Stack {
 public:
  /// The connection must outlive this object. While there is a desktop to stay above, it must receive
  /// substructure events of the root window.
  explicit X11Stack(X11Connection& connection) : connection_(connection) {}

  /// From now on keeps `windows` above all of `desktops`, which are children of the root window. With no
  /// desktops, nothing is stacked.
  void set(std::vector<xcb_window_t> windows, std::vector<xcb_window_t> desktops);
  /// Must be given every event of the connection.
  void handle(const xcb_generic_event_t& event);
  /// Corrects the place if the events have made it wrong. A correction soon after another one is put off, so
  /// that a program that claims the same place for itself does not keep both busy.
  void settle();

 private:
  void check();

  X11Connection& connection_;
  std::vector<xcb_window_t> windows_;
  std::vector<xcb_window_t> desktops_;
  bool stale_ = false;
  bool resting_ = false;
  EventSource rest_;
};

}  // namespace nivlo
