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
  sublayers_.push_back(std::move(layer));
}

void CALayer::removeFromSuperlayer() {
  const auto parent = superlayer();
  if (!parent) {
    return;
  }
  superlayer_.reset();
  std::erase_if(parent->sublayers_, [this](const auto& sublayer) { return sublayer.get() == this; });
}

}  // namespace nivlo
