// Follows the power state of the screens.
#pragma once

#include "host/loop/EventSource.hpp"
#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

/// Asks once a second, because servers send no event when they turn the screens off. Main thread only.
class X11ScreenPower {
 public:
  /// The connection must outlive this object.
  explicit X11ScreenPower(X11Connection& connection) : connection_(connection) {}

  /// Starts asking. After each answer the connection's listener is told that events have settled, so it can
  /// act on a change. Does nothing if the server cannot turn the screens off.
  void watch();
  bool isOn() const { return on_; }

 private:
  void ask();

  X11Connection& connection_;
  EventSource timer_;
  bool on_ = true;
};

}  // namespace nivlo
