// The base of the desktop background and the window on X11.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "host/surfaces/FrameClock.hpp"
#include "host/surfaces/Surface.hpp"
#include "host/surfaces/x11/X11Canvas.hpp"
#include "host/surfaces/x11/X11ScreenPower.hpp"

namespace nivlo {

/// Draws each new picture of the view into every canvas that can be seen, once the server has finished with
/// the last picture of all canvases. Main thread only.
class X11Surface : public Surface {
 public:
  void show(LaidOutView view) override;

 protected:
  X11Surface(std::unique_ptr<X11Connection> connection, PausePolicy pause, SurfaceHandlers handlers);

  /// Creates and maps the first canvases.
  virtual void openCanvases() = 0;
  /// Handles an event that the canvases have already been given.
  virtual void handle(const xcb_generic_event_t& event) = 0;
  /// Acts on the events that arrived together.
  virtual void settle() = 0;
  /// Returns whether other windows hide the canvas, under the pause policy and as far as anybody tells.
  virtual bool isCovered(const X11Canvas& canvas) const = 0;

  X11Connection& connection() const { return *connection_; }
  PausePolicy pause() const { return pause_; }
  const SurfaceHandlers& handlers() const { return handlers_; }

  using Canvases = std::map<std::string, std::unique_ptr<X11Canvas>>;
  /// Keyed by the name of the monitor. Empty until `show` is called.
  Canvases& canvases() { return canvases_; }

 private:
  bool isSeen(const X11Canvas& canvas) const;
  bool isReady() const;
  void reportVisibility();
  void draw();

  SurfaceHandlers handlers_;
  PausePolicy pause_;
  std::unique_ptr<X11Connection> connection_;
  X11ScreenPower power_;
  LaidOutView view_;
  LayerRenderer renderer_;
  Canvases canvases_;
  std::optional<FrameClock> clock_;
  EventSource start_;
  bool newPicture_ = false;
  bool visible_ = true;
};

}  // namespace nivlo
