#include "platform/UIKit/UIView.hpp"

#include <cmath>
#include <utility>

#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

bool UIView::isUsableFrame(CGRect frame) {
  return std::isfinite(frame.origin.x) && std::isfinite(frame.origin.y) && std::isfinite(frame.size.width) &&
         std::isfinite(frame.size.height) && frame.size.width >= 0 && frame.size.height >= 0;
}

std::shared_ptr<UIView> UIView::initWithFrame(CGRect frame) {
  return isUsableFrame(frame) ? ownedByMainThread(std::unique_ptr<UIView>(new UIView(frame))) : nullptr;
}

UIView::UIView(CGRect frame) : layer_(std::make_shared<CALayer>()) { layer_->setFrame(frame); }

void UIView::addSubview(std::shared_ptr<UIView> view) {
  for (auto* above = this; above; above = above->superview().get()) {
    if (above == view.get()) {
      return;
    }
  }
  if (!view) {
    return;
  }
  view->removeFromSuperview();
  view->superview_ = weak_from_this();
  layer_->addSublayer(view->layer_);
  subviews_.push_back(std::move(view));
}

void UIView::removeFromSuperview() {
  const auto parent = superview();
  if (!parent) {
    return;
  }
  superview_.reset();
  layer_->removeFromSuperlayer();
  std::erase_if(parent->subviews_, [this](const auto& subview) { return subview.get() == this; });
}

}  // namespace nivlo
