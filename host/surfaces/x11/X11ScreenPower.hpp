// Whether the screens are on.
#pragma once

#include "host/loop/EventSource.hpp"
#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

/// Asks once a second, as servers send no event when they turn the screens off. Main thread only.
class X11ScreenPower {
 public:
  /// The connection must outlive it.
  explicit X11ScreenPower(X11Connection& connection) : connection_(connection) {}

  /// From now on the connection's listener can see changes whenever it is told that events have settled. Does
  /// nothing where the server cannot turn screens off.
  void watch();
  bool isOn() const { return on_; }

 private:
  void ask();

  X11Connection& connection_;
  EventSource timer_;
  bool on_ = true;
};

}  // namespace nivlo
