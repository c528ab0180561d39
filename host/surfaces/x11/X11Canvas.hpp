// A window that a view is drawn into.
#pragma once

#include <memory>

#include "host/render/LayerRenderer.hpp"
#include "host/surfaces/x11/X11Picture.hpp"
#include "host/surfaces/x11/X11Rect.hpp"

namespace nivlo {

/// Makes the window and, in the end, destroys it. Main thread only.
class X11Canvas {
 public:
  enum class Kind {
    Managed,  ///< a window manager sees to it
    Lowest,   ///< none does: it keeps below all other windows by itself
  };

  /// Not mapped yet. The connection must outlive it.
  X11Canvas(X11Connection& connection, const X11Rect& place, Kind kind);
  ~X11Canvas();
  X11Canvas(const X11Canvas&) = delete;
  X11Canvas& operator=(const X11Canvas&) = delete;

  xcb_window_t window() const { return window_; }
  /// Where it was put; a window manager may have put it elsewhere.
  const X11Rect& place() const { return place_; }
  /// Asks for it until it is done: a window manager that is just starting may overlook it.
  void map();
  void move(const X11Rect& place);

  bool isMapped() const { return mapped_; }
  /// Whether other windows cover all of it. A server that keeps windows' content for a compositing manager
  /// never says so.
  bool isObscured() const { return obscured_; }

  /// Whether something has gone from the window that must be drawn again.
  bool isStale() const { return stale_; }
  /// Whether the server has taken the last picture.
  bool isReady() const { return !picture_ || !picture_->isInUse(); }
  /// Draws and sends it, when it is ready. Returns whether there was a camera's picture to draw.
  bool draw(LayerRenderer& renderer, const LaidOutView& view);

  /// To be told of every event.
  void handle(const xcb_generic_event_t& event);

 private:
  void setNames();
  void configured(const xcb_configure_notify_event_t& event);
  void lower();

  X11Connection& connection_;
  Kind kind_;
  X11Rect place_;
  int width_;   ///< pixels, as it is now
  int height_;  ///< pixels, as it is now
  xcb_window_t window_;
  xcb_gcontext_t context_;
  std::unique_ptr<X11Picture> picture_;
  EventSource mapping_;
  bool mapped_ = false;
  bool obscured_ = false;
  bool stale_ = false;
};

}  // namespace nivlo
