// The monitors of an X server.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/surfaces/ScreenRect.hpp"
#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

struct X11Monitor {
  std::string name;  ///< the name of its output, for example "eDP-1"
  ScreenRect place;
};

/// Lists the monitors through RandR 1.5. Main thread only.
class X11Monitors {
 public:
  /// Makes the connection receive RandR's events. It must also receive structure events of the root window,
  /// and outlive this object.
  explicit X11Monitors(X11Connection& connection);

  /// The monitors that are on, the primary one first. Without RandR 1.5 it is one named "screen", as large as
  /// the screen.
  std::vector<X11Monitor> list();
  /// Returns whether the event may have changed the list.
  bool isChange(const xcb_generic_event_t& event) const;

 private:
  std::string nameOf(xcb_atom_t atom);

  X11Connection& connection_;
  std::uint8_t firstEvent_ = 0;
  bool known_ = false;
};

}  // namespace nivlo
