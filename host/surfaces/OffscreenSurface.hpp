// A surface without a screen.
#pragma once

#include <optional>
#include <string>

#include "host/render/LayerRenderer.hpp"
#include "host/surfaces/FrameClock.hpp"
#include "host/surfaces/Surface.hpp"

namespace nivlo {

/// Draws into memory, at the size that the options give, and counts as visible at all times.
class OffscreenSurface : public Surface {
 public:
  OffscreenSurface(const SurfaceOptions& options, SurfaceHandlers handlers);

  std::string name() const override { return "offscreen"; }
  CGSize size() const override;
  void show(LaidOutView view) override;

 private:
  SurfaceHandlers handlers_;
  LaidOutView view_;
  LayerRenderer renderer_;
  Pixels pixels_;
  std::optional<FrameClock> clock_;
};

}  // namespace nivlo
