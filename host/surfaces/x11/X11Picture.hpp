// Pixels on their way into a window.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/render/Pixels.hpp"
#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

/// Memory that the server reads itself, or, where it cannot (it is on another machine, or old), memory whose
/// content is sent to it. Main thread only.
class X11Picture {
 public:
  /// The content is undefined. The connection must outlive the picture.
  X11Picture(X11Connection& connection, int width, int height);
  ~X11Picture();
  X11Picture(const X11Picture&) = delete;
  X11Picture& operator=(const X11Picture&) = delete;

  /// Not to be written while the picture is in use.
  PixelsView pixels() const { return pixels_; }

  /// Puts it into the window, whose property changes the connection must hear of. It is in use then until the
  /// server has taken it.
  void put(xcb_window_t window, xcb_gcontext_t context);
  bool isInUse() const { return inUse_; }
  /// To be told of every event.
  void handle(const xcb_generic_event_t& event);

 private:
  bool share();
  void send(xcb_window_t window, xcb_gcontext_t context);

  X11Connection& connection_;
  PixelsView pixels_;
  std::size_t bytes_;
  std::uint32_t segment_ = 0;    ///< 0: not shared
  std::uint8_t completion_ = 0;  ///< the event that says that the server has read the segment
  xcb_window_t window_ = 0;      ///< that it was put into last
  bool inUse_ = false;
};

}  // namespace nivlo
