// A surface that draws the view into pixels of its own.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/render/LayerRenderer.hpp"
#include "host/surfaces/FrameClock.hpp"
#include "platform/UIKit/UIView.hpp"

namespace nivlo {

/// Draws whenever there is a new frame. As it is, the pixels stay in memory: a surface without a screen. Main
/// thread only.
class DrawnSurface {
 public:
  /// The size in pixels. `onDrawn` is called after each drawn frame.
  DrawnSurface(int width, int height, std::function<void()> onDrawn);
  virtual ~DrawnSurface() = default;
  DrawnSurface(const DrawnSurface&) = delete;
  DrawnSurface& operator=(const DrawnSurface&) = delete;

  /// Shows the view from now on; once only.
  void show(std::shared_ptr<UIView> view);

  /// What was last drawn, black before anything was.
  const Pixels& pixels() const { return pixels_; }

 protected:
  /// Brings the drawn pixels to where they can be seen.
  virtual void present(const Pixels&) {}

 private:
  void draw();

  std::function<void()> onDrawn_;
  std::shared_ptr<UIView> view_;
  LayerRenderer renderer_;
  Pixels pixels_;
  std::optional<FrameClock> clock_;
};

}  // namespace nivlo
