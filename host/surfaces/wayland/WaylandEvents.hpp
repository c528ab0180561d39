// A Wayland connection's place in the main loop.
#pragma once

#include <functional>
#include <string>

#include <wayland-client.h>

#include "linux/handles/OwnedSource.hpp"

namespace nivlo {

/// Dispatches the connection's events on the main thread and sends what has been requested before the loop
/// sleeps. Main thread only.
class WaylandEvents {
 public:
  /// `lost` is called once, with the cause, when the compositor is gone or has cast the program out. The
  /// display must outlive this.
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
