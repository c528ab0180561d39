// The desktop background of an X server.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/surfaces/AwaitedOutput.hpp"
#include "host/surfaces/x11/X11Clients.hpp"
#include "host/surfaces/x11/X11Monitors.hpp"
#include "host/surfaces/x11/X11Stack.hpp"
#include "host/surfaces/x11/X11Surface.hpp"
#include "host/surfaces/x11/X11WindowManager.hpp"

namespace nivlo {

/// A window below all others on each monitor, or on the one that the options name. Clicks fall through it.
/// Main thread only.
///
/// A window manager that knows desktop windows keeps them lowest. Any other would frame, tile or raise them,
/// so the windows bypass it (override-redirect) and keep themselves lowest, as they do where there is no
/// window manager. They bypass it too where another program, such as a file manager, has a desktop window of
/// its own: they stay directly above that one, which no window manager does with two desktop windows, and
/// clicks reach it. They are made anew whenever a window manager or such a program comes or goes.
class X11Desktop : public X11Surface {
 public:
  /// Returns null, with the cause and the remedy in `*error`, if there is no usable display.
  static std::unique_ptr<Surface> open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error);

  std::string name() const override { return "the desktop (X11)"; }
  CGSize size() const override;
  std::string awaited() const override { return awaited_.text(); }

 private:
  X11Desktop(std::unique_ptr<X11Connection> connection, const SurfaceOptions& options,
             SurfaceHandlers handlers);

  void openCanvases() override;
  void handle(const xcb_generic_event_t& event) override;
  void settle() override;
  bool isCovered(const X11Canvas& canvas) const override;

  void findMonitors();
  void arrange(bool monitorsChanged);
  bool findDesktopsBelow();
  void receiveRootEvents();
  void placeCanvases();
  void findCovered();
  X11Canvas::Kind kindOfCanvas() const;
  std::unique_ptr<X11Canvas> makeCanvas(const ScreenRect& place);
  void setHints(xcb_window_t window, const ScreenRect& place);

  std::string output_;
  X11WindowManager windowManager_;
  X11Clients clients_;
  X11Monitors allMonitors_;
  AwaitedOutput awaited_;
  X11Stack stack_;
  std::vector<X11Monitor> monitors_;         ///< those that show the wallpaper
  std::vector<xcb_window_t> desktopsBelow_;  ///< other programs' desktop windows on these monitors
  std::set<xcb_window_t> covered_;           ///< the canvases that other windows hide
  bool monitorsChanged_ = false;
  bool windowManagerChanged_ = false;
  bool toldOfIcons_ = false;
};

}  // namespace nivlo
