// The record of a scanned code.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/Foundation/NSObject.hpp"
#include "platform/UIKit/UIBezierPath.hpp"

namespace nivlo {

/// A scanned code, as the wallpaper keeps it. Main thread only.
class Barcode : public NSObject {
 public:
  using CodeObject = std::shared_ptr<const AVMetadataMachineReadableCodeObject>;

  /// Makes the record of an object, in the object's coordinates. Null for null, and for an object without
  /// corners or without text, of which there is nothing to show. A corner that is not a valid point counts as
  /// the one before it, and the first as (0, 0).
  static std::shared_ptr<Barcode> processMetadataObject(const CodeObject& object);

  /// The object that the record was made from.
  const CodeObject& metadataObject() const { return metadataObject_; }
  void setMetadataObject(CodeObject object) { metadataObject_ = std::move(object); }
  /// The type of code, for example "org.iso.QRCode".
  const std::string& barcodeType() const { return barcodeType_; }
  void setBarcodeType(std::string type) { barcodeType_ = std::move(type); }
  /// The decoded text, in UTF-8.
  const std::string& barcodeData() const { return barcodeData_; }
  void setBarcodeData(std::string data) { barcodeData_ = std::move(data); }
  /// The closed polygon through the object's corners, in their order.
  const std::shared_ptr<UIBezierPath>& cornersPath() const { return cornersPath_; }
  void setCornersPath(std::shared_ptr<UIBezierPath> path) { cornersPath_ = std::move(path); }
  /// The object's bounds as a closed rectangle.
  const std::shared_ptr<UIBezierPath>& boundingBoxPath() const { return boundingBoxPath_; }
  void setBoundingBoxPath(std::shared_ptr<UIBezierPath> path) { boundingBoxPath_ = std::move(path); }

  /// The same as barcodeType() and barcodeData().
  const std::string& getBarcodeType() const { return barcodeType_; }
  const std::string& getBarcodeData() const { return barcodeData_; }

  /// Writes "Barcode of type: TYPE and data: DATA" to the system log. TYPE is that of metadataObject().
  void printBarcodeData() const;

 private:
  CodeObject metadataObject_;
  std::string barcodeType_;
  std::string barcodeData_;
  std::shared_ptr<UIBezierPath> cornersPath_;
  std::shared_ptr<UIBezierPath> boundingBoxPath_;
};

}  // namespace nivlo
