#include "platform/UIKit/CALayer.hpp"

#include <utility>

namespace nivlo {

void CALayer::addSublayer(std::shared_ptr<CALayer> layer) {
  for (auto* above = this; above; above = above->superlayer().get()) {
    if (above == layer.get()) {
      return;
    }
  }
  if (!layer) {
    return;
  }
  layer->removeFromSuperlayer();
  layer->superlayer_ = weak_from_this();
  layer->setPictureHandler(pictureHandler());
  sublayers_.push_back(std::move(layer));
}

void CALayer::removeFromSuperlayer() {
  const auto parent = superlayer();
  if (!parent) {
    return;
  }
  superlayer_.reset();
  setPictureHandler(nullptr);
  std::erase_if(parent->sublayers_, [this](const auto& sublayer) { return sublayer.get() == this; });
}

void CALayer::setContents(VideoFramePtr picture) {
  const auto geometry = picture ? pictureGeometry(*picture) : PictureGeometry();
  setPicture({std::move(picture), geometry});
}

CaptureFrame CALayer::picture() const {
  const std::lock_guard lock(mutex_);
  return picture_;
}

void CALayer::setPicture(CaptureFrame picture) {
  {
    // The replaced picture ends up in `picture`, so its memory is given back outside the lock.
    const std::lock_guard lock(mutex_);
    std::swap(picture_, picture);
  }
  if (const auto handler = pictureHandler()) {
    handler();
  }
}

void CALayer::setPictureHandler(const std::function<void()>& handler) {
  {
    auto replaced = handler;
    const std::lock_guard lock(mutex_);
    pictureHandler_.swap(replaced);
  }
  for (const auto& sublayer : sublayers_) {
    sublayer->setPictureHandler(handler);
  }
}

std::function<void()> CALayer::pictureHandler() const {
  const std::lock_guard lock(mutex_);
  return pictureHandler_;
}

}  // namespace nivlo
