// An ordinary window on an X11 display.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "host/loop/EventSource.hpp"
#include "host/render/LayerRenderer.hpp"
#include "host/surfaces/FrameClock.hpp"
#include "host/surfaces/Surface.hpp"
#include "linux/glib/Owned.hpp"

namespace nivlo {

/// A window of a fixed size. Closing it, or losing the display, ends the show.
class X11Window : public Surface {
 public:
  /// Null, with the cause in `*error`, where there is no display that can show it.
  static std::unique_ptr<X11Window> open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                         std::string* error);

  std::string name() const override { return "an X11 window"; }
  CGSize size() const override;
  void show(LaidOutView view) override;

 private:
  using Connection = Owned<xcb_connection_t, xcb_disconnect>;

  X11Window(Connection connection, const xcb_screen_t& screen, const SurfaceOptions& options,
            SurfaceHandlers handlers);
  void createWindow(const xcb_screen_t& screen, int width, int height);
  void setText(xcb_atom_t property, const std::string& text);
  xcb_atom_t atom(const std::string& name);
  void handleEvents();
  void present();
  void put(int firstRow, int rows);

  SurfaceHandlers handlers_;
  LaidOutView view_;
  LayerRenderer renderer_;
  Pixels pixels_;
  std::optional<FrameClock> clock_;
  Connection connection_;
  std::uint8_t depth_;
  xcb_window_t window_ = 0;
  xcb_gcontext_t context_ = 0;
  xcb_atom_t deleteWindow_ = 0;
  EventSource events_;
};

}  // namespace nivlo
