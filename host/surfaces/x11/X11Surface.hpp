// What the desktop and a window have in common.
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

/// Draws the view into canvases: each of its frames into all canvases that can be seen, once the server has
/// taken the last one from all of them.
class X11Surface : public Surface {
 public:
  void show(LaidOutView view) override;

 protected:
  X11Surface(std::unique_ptr<X11Connection> connection, PausePolicy pause, SurfaceHandlers handlers);

  /// Makes and maps the first canvases.
  virtual void openCanvases() = 0;
  /// An event, which the canvases have heard of.
  virtual void handle(const xcb_generic_event_t& event) = 0;
  /// Acts on the events that came together.
  virtual void settle() = 0;
  virtual bool isCovered(const X11Canvas& canvas) const = 0;

  X11Connection& connection() const { return *connection_; }
  PausePolicy pause() const { return pause_; }
  const SurfaceHandlers& handlers() const { return handlers_; }

  using Canvases = std::map<std::string, std::unique_ptr<X11Canvas>>;
  /// By the name of the monitor; before the show there are none.
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
  bool newFrame_ = false;
  bool visible_ = true;
};

}  // namespace nivlo
