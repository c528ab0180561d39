// Other programs' windows, as far as they hide the wallpaper.
#pragma once

#include <cstdint>
#include <map>

#include "host/surfaces/Surface.hpp"
#include "host/surfaces/x11/X11Connection.hpp"
#include "host/surfaces/x11/X11Rect.hpp"

namespace nivlo {

/// The number that stands for all virtual desktops in _NET_WM_DESKTOP (EWMH 1.3).
inline constexpr std::uint32_t kEveryX11Desktop = 0xffffffff;

/// Follows the state, the virtual desktop and the place of every window that the window manager lists. A
/// window that disappears while it is being queried covers nothing. Main thread only.
class X11Clients {
 public:
  /// The connection must receive property changes of the root window and outlive this object.
  explicit X11Clients(X11Connection& connection) : connection_(connection) {}

  /// Must be given every event of the connection.
  void handle(const xcb_generic_event_t& event);
  /// Queries whatever has changed according to the events.
  void update();
  /// To be called when the window manager has gone or changed: what it said is no longer valid.
  void forget();

  /// Whether the area is mostly covered by a window that counts as hiding it under this policy.
  bool cover(const X11Rect& area, PausePolicy policy) const;

 private:
  struct Client {
    bool fullscreen = false;
    bool maximized = false;
    bool minimized = false;
    std::uint32_t desktop = 0;
    X11Rect place;
    bool stale = true;

    bool covers() const { return (fullscreen || maximized) && !minimized; }
  };

  void propertyChanged(const xcb_property_notify_event_t& event);
  void readList();
  void readDesktop();
  void read(xcb_window_t window, Client& client);
  bool isHere(const Client& client) const;

  X11Connection& connection_;
  std::map<xcb_window_t, Client> clients_;
  bool listStale_ = true;
  bool desktopStale_ = true;
  std::uint32_t currentDesktop_ = 0;
  bool showingDesktop_ = false;
};

}  // namespace nivlo
