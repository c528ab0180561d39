// An ordinary window on an X11 display.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <xcb/xcb.h>

#include "host/loop/EventSource.hpp"
#include "host/surfaces/DrawnSurface.hpp"
#include "linux/glib/Owned.hpp"

namespace nivlo {

/// A window of a fixed size. Closing it, or losing the display, ends the show.
class X11Window : public DrawnSurface {
 public:
  struct Handlers {
    std::function<void()> drawn;
    std::function<void()> closed;                        ///< a person closed the window
    std::function<void(const std::string& cause)> lost;  ///< the display is gone
  };

  /// Null, with the cause in `*error`, where there is no display that can show it.
  static std::unique_ptr<X11Window> open(int width, int height, Handlers handlers, std::string* error);

 protected:
  void present(const Pixels& pixels) override;

 private:
  using Connection = Owned<xcb_connection_t, xcb_disconnect>;

  X11Window(Connection connection, const xcb_screen_t& screen, int width, int height, Handlers handlers);
  void createWindow(const xcb_screen_t& screen, int width, int height);
  void setText(xcb_atom_t property, const std::string& text);
  xcb_atom_t atom(const std::string& name);
  void handleEvents();
  void put(const Pixels& pixels, int firstRow, int rows);

  Handlers handlers_;
  Connection connection_;
  std::uint8_t depth_;
  xcb_window_t window_ = 0;
  xcb_gcontext_t context_ = 0;
  xcb_atom_t deleteWindow_ = 0;
  EventSource events_;
};

}  // namespace nivlo
