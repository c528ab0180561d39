// An ordinary window on an X server.
#pragma once

#include <memory>
#include <string>

#include "host/surfaces/x11/X11Surface.hpp"

namespace nivlo {

/// A window that the user can resize and close. Main thread only.
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

  void openCanvases() override;
  void handle(const xcb_generic_event_t& event) override;
  void settle() override;
  bool isCovered(const X11Canvas& canvas) const override;

  ScreenRect place_;
  bool stateChanged_ = false;
  bool minimized_ = false;
};

}  // namespace nivlo
