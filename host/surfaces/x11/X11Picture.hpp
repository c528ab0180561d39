// Pixels that are sent to a window.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/render/Pixels.hpp"
#include "host/surfaces/x11/X11Connection.hpp"

namespace nivlo {

/// The pixels lie in memory that the server reads by itself or, if it cannot do that (it is old, or on
/// another machine), are copied to it through the connection. Main thread only.
class X11Picture {
 public:
  /// The pixels start out undefined. The connection must outlive the picture. Throws std::bad_alloc.
  X11Picture(X11Connection& connection, int width, int height);
  ~X11Picture();
  X11Picture(const X11Picture&) = delete;
  X11Picture& operator=(const X11Picture&) = delete;

  /// Must not be written to while the picture is in use.
  PixelSpan pixels() const { return pixels_; }

  /// Puts the picture into the window, whose property changes the connection must receive. The picture is in
  /// use until the server has read it.
  void put(xcb_window_t window, xcb_gcontext_t context);
  bool isInUse() const { return inUse_; }
  /// Must be given every event of the connection.
  void handle(const xcb_generic_event_t& event);

 private:
  bool share();
  void send(xcb_window_t window, xcb_gcontext_t context);

  X11Connection& connection_;
  PixelSpan pixels_;
  std::size_t bytes_;
  std::uint32_t segment_ = 0;    ///< the shared memory; 0 if it is not shared
  std::uint8_t completion_ = 0;  ///< the type of the event that follows once the server has read it
  xcb_window_t window_ = 0;      ///< where it was last put
  bool inUse_ = false;
};

}  // namespace nivlo
