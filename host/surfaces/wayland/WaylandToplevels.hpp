// Other programs' windows, as far as they hide the wallpaper.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/surfaces/wayland/WaylandHandles.hpp"
#include "host/surfaces/windows/DesktopWindows.hpp"

namespace nivlo {

/// Follows every window through the compositor's window list. The list knows neither workspaces nor stacking
/// order. An output therefore counts as covered by the window that was active there last, or by the one that
/// this is a dialog of, and only while any window is active at all: on an empty workspace none is. Main
/// thread only.
class WaylandToplevels {
 public:
  /// Without a manager every answer is Unknown. `changed` is called when any answer may have changed.
  WaylandToplevels(WaylandHandle<zwlr_foreign_toplevel_manager_v1> manager, std::function<void()> changed);
  ~WaylandToplevels();
  WaylandToplevels(const WaylandToplevels&) = delete;
  WaylandToplevels& operator=(const WaylandToplevels&) = delete;

  Cover coverOf(wl_output* output) const;

 private:
  struct Toplevel;
  static const zwlr_foreign_toplevel_manager_v1_listener kManagerListener;
  static const zwlr_foreign_toplevel_handle_v1_listener kToplevelListener;

  void add(zwlr_foreign_toplevel_handle_v1* handle);
  void apply(Toplevel& toplevel);
  void remove(const Toplevel& toplevel);
  const Toplevel* find(const zwlr_foreign_toplevel_handle_v1* handle) const;
  Cover coverBy(const Toplevel& toplevel) const;

  WaylandHandle<zwlr_foreign_toplevel_manager_v1> manager_;
  std::function<void()> changed_;
  std::vector<std::unique_ptr<Toplevel>> toplevels_;
  unsigned activations_ = 0;
};

}  // namespace nivlo
