// An ordinary window on an X server.
#pragma once

#include "host/surfaces/x11/X11Surface.hpp"

namespace nivlo {

/// Can be resized and closed. Main thread only.
class X11Window : public X11Surface {
 public:
  X11Window(std::unique_ptr<X11Connection> connection, const SurfaceOptions& options,
            SurfaceHandlers handlers);

  std::string name() const override { return "an X11 window"; }
  CGSize size() const override;

 private:
  void open() override;
  void handle(const xcb_generic_event_t& event) override;
  void settle() override;
  bool isCovered(const X11Canvas& canvas) const override;

  X11Rect place_;
  bool stateChanged_ = false;
  bool minimised_ = false;
};

}  // namespace nivlo
