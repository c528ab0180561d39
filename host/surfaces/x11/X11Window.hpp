// An ordinary window on an X server.
#pragma once

#include <memory>
#include <string>

#include "host/surfaces/x11/X11Surface.hpp"

namespace nivlo {

/// A window that the user can resize and close, also with the Escape key, as not every X server has a window
/// manager. It is at most as large as the work area of the first monitor. Main thread only.
class X11Window : public X11Surface {
 public:
  /// Returns null, with the cause and the remedy in `*error`, if there is no usable display.
  static std::unique_ptr<Surface> open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error);

  std::string name() const override { return "an X11 window"; }
  CGSize size() const override;

 private:
  X11Window(std::unique_ptr<X11Connection> connection, const SurfaceOptions& options,
            SurfaceHandlers handlers);

  ScreenRect workArea() const;
  void fitWorkArea();
  bool isEscape(xcb_keycode_t key) const;
  void openCanvases() override;
  void handle(const xcb_generic_event_t& event) override;
  void settle() override;
  bool isCovered(const X11Canvas& canvas) const override;

  ScreenRect place_;
  bool fillsWorkArea_ = false;
  bool stateChanged_ = false;
  bool minimized_ = false;
};

}  // namespace nivlo
