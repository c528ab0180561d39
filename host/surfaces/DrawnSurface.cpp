#include "host/surfaces/DrawnSurface.hpp"

#include <utility>

namespace nivlo {

DrawnSurface::DrawnSurface(int width, int height, std::function<void()> onDrawn)
    : onDrawn_(std::move(onDrawn)) {
  pixels_.resize(width, height);
}

void DrawnSurface::show(std::shared_ptr<UIView> view) {
  view_ = std::move(view);
  clock_.emplace(*view_, [this] { draw(); });
}

void DrawnSurface::draw() {
  if (renderer_.render(*view_->layer(), pixels_)) {
    present(pixels_);
    onDrawn_();
  }
}

}  // namespace nivlo
