#include "platform/UIKit/UIBezierPath.hpp"

namespace nivlo {

std::shared_ptr<UIBezierPath> UIBezierPath::bezierPathWithCGPath(const CGMutablePathRef& path) {
  return std::shared_ptr<UIBezierPath>(new UIBezierPath(path ? *path : nivlo::CGPath{}));
}

std::shared_ptr<UIBezierPath> UIBezierPath::bezierPathWithRect(CGRect rect) {
  const double left = rect.origin.x;
  const double top = rect.origin.y;
  const double right = left + rect.size.width;
  const double bottom = top + rect.size.height;
  const auto path = CGPathCreateMutable();
  CGPathMoveToPoint(path, nullptr, left, top);
  CGPathAddLineToPoint(path, nullptr, right, top);
  CGPathAddLineToPoint(path, nullptr, right, bottom);
  CGPathAddLineToPoint(path, nullptr, left, bottom);
  CGPathCloseSubpath(path);
  return bezierPathWithCGPath(path);
}

}  // namespace nivlo
