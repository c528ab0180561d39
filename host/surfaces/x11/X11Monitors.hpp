// The monitors of an X server.
#pragma once

#include <string>
#include <vector>

#include "host/surfaces/x11/X11Connection.hpp"
#include "host/surfaces/x11/X11Rect.hpp"

namespace nivlo {

struct X11Monitor {
  std::string name;  ///< of its output, for example "eDP-1"
  X11Rect place;
};

/// Main thread only.
class X11Monitors {
 public:
  /// Has the connection hear of changes; of the root window's it must hear too. It must outlive this.
  explicit X11Monitors(X11Connection& connection);

  /// Those that are on, the primary one first; one named "screen" where the server knows of none.
  std::vector<X11Monitor> list();
  /// Whether the event says that the list has changed.
  bool isChange(const xcb_generic_event_t& event) const;

 private:
  std::string nameOf(xcb_atom_t atom);

  X11Connection& connection_;
  std::uint8_t firstEvent_ = 0;
  bool known_ = false;
};

}  // namespace nivlo
