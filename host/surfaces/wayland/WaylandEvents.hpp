// Delivers a Wayland connection's events through the main loop.
#pragma once

#include <functional>
#include <string>

#include <wayland-client.h>

#include "linux/handles/OwnedSource.hpp"

namespace nivlo {

/// Dispatches the connection's events on the main thread, and sends pending requests whenever the loop is
/// about to sleep. Main thread only.
class WaylandEvents {
 public:
  /// `lost` is called once, with the cause, when the compositor has gone or has ended the connection over a
  /// protocol error. The display must outlive this object.
  WaylandEvents(wl_display* display, std::function<void(const std::string& cause)> lost);
  ~WaylandEvents();
  WaylandEvents(const WaylandEvents&) = delete;
  WaylandEvents& operator=(const WaylandEvents&) = delete;

 private:
  struct Source;
  bool prepare();
  bool check();
  bool dispatch();

  wl_display* display_;
  std::function<void(const std::string&)> lost_;
  bool reading_ = false;
  bool broken_ = false;
  gpointer descriptor_ = nullptr;
  OwnedSource source_;
};

}  // namespace nivlo
