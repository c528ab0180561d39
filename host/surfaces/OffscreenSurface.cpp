#include "host/surfaces/OffscreenSurface.hpp"

#include <utility>

namespace nivlo {

OffscreenSurface::OffscreenSurface(const SurfaceOptions& options, SurfaceHandlers handlers)
    : handlers_(std::move(handlers)) {
  pixels_.resize(options.width, options.height);
}

CGSize OffscreenSurface::size() const {
  return {static_cast<double>(pixels_.width), static_cast<double>(pixels_.height)};
}

void OffscreenSurface::show(LaidOutView view) {
  view_ = std::move(view);
  clock_.emplace(view_, [this] {
    if (renderer_.render(view_, pixels_.span())) {
      handlers_.drawn();
    }
  });
}

}  // namespace nivlo
