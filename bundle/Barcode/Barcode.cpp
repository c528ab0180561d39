#include "bundle/Barcode/Barcode.hpp"

#include <vector>

#include "platform/CoreGraphics/CGPath.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

std::shared_ptr<UIBezierPath> polygonThrough(const std::vector<NSDictionary>& corners) {
  auto path = CGPathCreateMutable();
  CGPoint point;
  CGPointMakeWithDictionaryRepresentation(corners[0], &point);
  CGPathMoveToPoint(path, nullptr, point.x, point.y);
  for (std::size_t i = 1; i < corners.size(); ++i) {
    CGPointMakeWithDictionaryRepresentation(corners[i], &point);
    CGPathAddLineToPoint(path, nullptr, point.x, point.y);
  }
  CGPathCloseSubpath(path);
  auto polygon = UIBezierPath::bezierPathWithCGPath(path);
  CGPathRelease(path);
  return polygon;
}

}  // namespace

std::shared_ptr<Barcode> Barcode::processMetadataObject(const CodeObject& object) {
  if (!object || object->corners().empty() || !object->stringValue()) {
    return nullptr;
  }
  auto barcode = std::make_shared<Barcode>();
  barcode->setBarcodeType(object->type());
  barcode->setBarcodeData(*object->stringValue());
  barcode->setMetadataObject(object);
  barcode->setCornersPath(polygonThrough(object->corners()));
  barcode->setBoundingBoxPath(UIBezierPath::bezierPathWithRect(object->bounds()));
  return barcode;
}

void Barcode::printBarcodeData() const {
  NSLog("Barcode of type: %@ and data: %@", metadataObject_ ? metadataObject_->type() : std::string(),
        barcodeData_);
}

}  // namespace nivlo
