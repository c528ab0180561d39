// The desktop background of an X server.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/surfaces/x11/X11Clients.hpp"
#include "host/surfaces/x11/X11Manager.hpp"
#include "host/surfaces/x11/X11Monitors.hpp"
#include "host/surfaces/x11/X11Surface.hpp"

namespace nivlo {

/// A window below all others on each monitor, or on the one that was asked for, through which clicks fall to
/// what lies below. Main thread only.
///
/// A window manager that knows desktop windows keeps them lowest. Any other would frame, tile or raise them,
/// so from those, and where there is none, the windows are withheld (override-redirect) and keep lowest by
/// themselves. When a manager comes or goes they are made anew.
class X11Desktop : public X11Surface {
 public:
  /// Null, with the cause in `*error`, where there is no monitor of the name that was asked for.
  static std::unique_ptr<Surface> open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error);

  std::string name() const override { return "the desktop (X11)"; }
  CGSize size() const override;

 private:
  X11Desktop(std::unique_ptr<X11Connection> connection, const SurfaceOptions& options,
             SurfaceHandlers handlers);

  void openCanvases() override;
  void handle(const xcb_generic_event_t& event) override;
  void settle() override;
  bool isCovered(const X11Canvas& canvas) const override;

  void findMonitors();
  void placeCanvases();
  std::unique_ptr<X11Canvas> makeCanvas(const X11Rect& place);
  void setHints(xcb_window_t window, const X11Rect& place);

  std::string output_;
  X11Manager manager_;
  X11Clients clients_;
  X11Monitors allMonitors_;
  std::vector<X11Monitor> monitors_;  ///< that the wallpaper is on
  bool monitorsChanged_ = false;
  bool managerChanged_ = false;
};

}  // namespace nivlo
