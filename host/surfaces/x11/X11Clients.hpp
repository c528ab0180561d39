// Other programs' windows, as far as they hide the wallpaper or lie below it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "host/surfaces/ScreenRect.hpp"
#include "host/surfaces/Surface.hpp"
#include "host/surfaces/x11/X11Connection.hpp"

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
  /// Queries whatever has changed according to the events. Returns whether anything has.
  bool update();
  /// To be called when the window manager has gone or changed: what it said is no longer valid.
  void forget();

  /// Returns whether the windows above the desktop hide the area under this policy: a fullscreen or maximised
  /// one that covers most of it, or all of them together so much that less than 5 % of it can be seen.
  bool cover(const ScreenRect& area, PausePolicy policy) const;
  /// The desktop windows that cover most of one of the areas, as children of the root window: their frames if
  /// the window manager has framed them. Smaller windows of that type are ornaments.
  std::vector<xcb_window_t> desktopsUnder(const std::vector<ScreenRect>& areas) const;

 private:
  /// Margins of a window in pixels: left, right, top and bottom.
  using Margins = std::array<int, 4>;

  struct Client {
    bool isDesktop = false;
    bool fullscreen = false;
    bool maximized = false;
    bool minimized = false;  ///< or rolled up
    bool mapped = false;
    std::uint32_t desktop = 0;
    Margins margins{};  ///< around the window itself; negative for a shadow that it draws inside
    ScreenRect place;
    xcb_window_t top = XCB_NONE;  ///< the child of the root window; known of desktop windows only
    bool stale = true;
    bool moved = true;
  };

  void propertyChanged(const xcb_property_notify_event_t& event);
  void readList();
  void readDesktop();
  void read(xcb_window_t window, Client& client);
  void readPlace(xcb_window_t window, Client& client);
  Margins marginsOf(xcb_window_t window);
  xcb_window_t topOf(xcb_window_t window);
  bool hides(const Client& client) const;

  X11Connection& connection_;
  std::map<xcb_window_t, Client> clients_;
  bool listStale_ = true;
  bool desktopStale_ = true;
  std::uint32_t currentDesktop_ = 0;
  bool showingDesktop_ = false;
};

}  // namespace nivlo
