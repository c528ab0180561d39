// An ordinary window on an X server.
#pragma once

#include "host/surfaces/x11/X11Surface.hpp"

namespace nivlo {

/// Can be resized and closed. Main thread only.
class X11Window : public X11Surface {
 public:
  /// Null, with the cause and the remedy in `*error`, where there is no display that can show it.
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

  X11Rect place_;
  bool stateChanged_ = false;
  bool minimised_ = false;
};

}  // namespace nivlo
