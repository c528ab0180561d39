// The record of one decoded code.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/UIKit/UIBezierPath.hpp"

namespace nivlo {

class Barcode {
 public:
  using CodeObject = std::shared_ptr<const AVMetadataMachineReadableCodeObject>;

  /// A record of the object, in the object's own coordinates. Null for null, and for an object without
  /// corners or without text: there is nothing to show of one, and nothing is made up. A corner that cannot
  /// be read repeats the one before it; the first one is then (0, 0).
  static std::shared_ptr<Barcode> processMetadataObject(const CodeObject& object);

  const CodeObject& metadataObject() const { return metadataObject_; }
  void setMetadataObject(CodeObject object) { metadataObject_ = std::move(object); }
  /// For example "org.iso.QRCode".
  const std::string& barcodeType() const { return barcodeType_; }
  void setBarcodeType(std::string type) { barcodeType_ = std::move(type); }
  /// UTF-8.
  const std::string& barcodeData() const { return barcodeData_; }
  void setBarcodeData(std::string data) { barcodeData_ = std::move(data); }
  /// The closed polygon through the corners, in their order.
  const std::shared_ptr<UIBezierPath>& cornersPath() const { return cornersPath_; }
  void setCornersPath(std::shared_ptr<UIBezierPath> path) { cornersPath_ = std::move(path); }
  const std::shared_ptr<UIBezierPath>& boundingBoxPath() const { return boundingBoxPath_; }
  void setBoundingBoxPath(std::shared_ptr<UIBezierPath> path) { boundingBoxPath_ = std::move(path); }

  const std::string& getBarcodeType() const { return barcodeType_; }
  const std::string& getBarcodeData() const { return barcodeData_; }

  /// Writes "Barcode of type: TYPE and data: DATA" to the system log, the type read from the code object.
  void printBarcodeData() const;

 private:
  CodeObject metadataObject_;
  std::string barcodeType_;
  std::string barcodeData_;
  std::shared_ptr<UIBezierPath> cornersPath_;
  std::shared_ptr<UIBezierPath> boundingBoxPath_;
};

}  // namespace nivlo
