// A window that a view is drawn into.
#pragma once

#include <memory>

#include "host/render/LayerRenderer.hpp"
#include "host/surfaces/ScreenRect.hpp"
#include "host/surfaces/x11/X11Picture.hpp"

namespace nivlo {

/// Owns the window. Main thread only.
class X11Canvas {
 public:
  enum class Kind {
    Managed,  ///< placed and stacked by the window manager
    Lowest,   ///< unknown to any window manager; it keeps itself below all other windows
    Stacked,  ///< unknown to any window manager; whoever makes it stacks it
  };

  /// Creates the window, which is not mapped yet. The connection must outlive the canvas.
  X11Canvas(X11Connection& connection, const ScreenRect& place, Kind kind);
  ~X11Canvas();
  X11Canvas(const X11Canvas&) = delete;
  X11Canvas& operator=(const X11Canvas&) = delete;

  xcb_window_t window() const { return window_; }
  /// Receives key presses, too, while the window has the keyboard.
  void receiveKeys();
  /// The place where the window was last put; a window manager may have moved it since.
  const ScreenRect& place() const { return place_; }
  /// Maps the window, asking again until it is done: a window manager that is just starting may miss a
  /// request.
  void map();
  void move(const ScreenRect& place);

  bool isMapped() const { return mapped_; }
  /// Returns whether other windows cover all of it. Under a compositing manager the server never reports
  /// that, because it keeps the content of covered windows.
  bool isObscured() const { return obscured_; }

  /// Returns whether the window has lost some of its content, so that it must be drawn again.
  bool isStale() const { return stale_; }
  /// Returns whether the server has finished reading the last picture.
  bool isReady() const { return !picture_ || !picture_->isInUse(); }
  /// Draws the view and sends it to the server; does nothing unless ready. Returns whether any picture of the
  /// view can be seen.
  bool draw(LayerRenderer& renderer, const LaidOutView& view);

  /// Must be given every event of the connection.
  void handle(const xcb_generic_event_t& event);

 private:
  void setNames();
  void configured(const xcb_configure_notify_event_t& event);
  void lower();

  X11Connection& connection_;
  Kind kind_;
  ScreenRect place_;
  int width_;   ///< pixels, as the server last reported
  int height_;  ///< pixels
  xcb_window_t window_;
  xcb_gcontext_t context_;
  std::unique_ptr<X11Picture> picture_;
  EventSource mapping_;
  bool mapped_ = false;
  bool obscured_ = false;
  bool stale_ = false;
};

}  // namespace nivlo
