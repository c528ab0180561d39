// The layer of the desktop that the wallpaper belongs to now.
#pragma once

#include <functional>

#include <gio/gio.h>

#include "host/surfaces/Surface.hpp"

namespace nivlo {

/// Follows Plasma's desktop (plasmashell), which covers the whole background layer as soon as it is clicked
/// or starts. It is watched on the session bus, because it may start after the wallpaper does. Main thread
/// only.
class WaylandLayer {
 public:
  /// `changed` is called through the main loop when `isBottom` has changed.
  WaylandLayer(DesktopLayer wanted, std::function<void()> changed);
  ~WaylandLayer();
  WaylandLayer(const WaylandLayer&) = delete;
  WaylandLayer& operator=(const WaylandLayer&) = delete;

  /// Returns whether it is the bottom layer, not the background layer.
  bool isBottom() const { return isBottom_; }

 private:
  void setBottom(bool isBottom);

  std::function<void()> changed_;
  bool isBottom_;
  guint watch_ = 0;
};

}  // namespace nivlo
