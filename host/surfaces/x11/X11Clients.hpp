// Other programs' windows, as far as they hide the desktop.
#pragma once

#include <cstdint>
#include <map>

#include "host/surfaces/Surface.hpp"
#include "host/surfaces/x11/X11Connection.hpp"
#include "host/surfaces/x11/X11Rect.hpp"

namespace nivlo {

/// In place of a virtual desktop's number: a window that is on all of them.
inline constexpr std::uint32_t kEveryX11Desktop = 0xffffffff;

/// Follows what the window manager says of the windows that it manages: how they are shown, on which desktop,
/// and where. A window that goes while it is asked for counts as gone. Main thread only.
class X11Clients {
 public:
  /// The connection must hear of the root window's properties, and outlive this.
  explicit X11Clients(X11Connection& connection) : connection_(connection) {}

  /// To be told of every event.
  void handle(const xcb_generic_event_t& event);
  /// Asks for what the events say has changed.
  void update();
  /// Nobody manages windows any more, or somebody else does.
  void forget();

  /// Whether a window hides the area that the policy lets hide it.
  bool cover(const X11Rect& area, PausePolicy policy) const;

 private:
  struct Client {
    bool fullscreen = false;
    bool maximised = false;
    bool minimised = false;
    std::uint32_t desktop = 0;
    X11Rect place;
    bool stale = true;

    bool covers() const { return (fullscreen || maximised) && !minimised; }
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
