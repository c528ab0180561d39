// What a metadata output finds in the picture.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/AVFoundation/PictureGeometry.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSDictionary.hpp"

namespace nivlo {

inline constexpr const char* AVMetadataObjectTypeQRCode = "org.iso.QRCode";
inline constexpr const char* AVMetadataObjectTypePDF417Code = "org.iso.PDF417";
inline constexpr const char* AVMetadataObjectTypeUPCECode = "org.gs1.UPC-E";
inline constexpr const char* AVMetadataObjectTypeAztecCode = "org.iso.Aztec";
inline constexpr const char* AVMetadataObjectTypeCode39Code = "org.iso.Code39";
inline constexpr const char* AVMetadataObjectTypeCode39Mod43Code = "org.iso.Code39Mod43";
inline constexpr const char* AVMetadataObjectTypeEAN13Code = "org.gs1.EAN-13";
inline constexpr const char* AVMetadataObjectTypeEAN8Code = "org.gs1.EAN-8";
inline constexpr const char* AVMetadataObjectTypeCode93Code = "com.intermec.Code93";
inline constexpr const char* AVMetadataObjectTypeCode128Code = "org.iso.Code128";

/// The ten symbologies that a code reader may report.
inline constexpr std::array kMachineReadableCodeTypes = {
    AVMetadataObjectTypeQRCode,     AVMetadataObjectTypePDF417Code, AVMetadataObjectTypeUPCECode,
    AVMetadataObjectTypeAztecCode,  AVMetadataObjectTypeCode39Code, AVMetadataObjectTypeCode39Mod43Code,
    AVMetadataObjectTypeEAN13Code,  AVMetadataObjectTypeEAN8Code,   AVMetadataObjectTypeCode93Code,
    AVMetadataObjectTypeCode128Code};

/// Immutable. Anything with a type and a place; only machine-readable codes have more.
class AVMetadataObject {
 public:
  AVMetadataObject(std::string type, CGRect bounds) : type_(std::move(type)), bounds_(bounds) {}
  virtual ~AVMetadataObject() = default;

  const std::string& type() const { return type_; }
  CGRect bounds() const { return bounds_; }

 private:
  std::string type_;
  CGRect bounds_;
};

/// Immutable. As reported, coordinates are pixels of the picture as the camera delivered it; a preview layer
/// converts them to its own.
class AVMetadataMachineReadableCodeObject : public AVMetadataObject {
 public:
  /// The bounds are those of the corners. `picture` is the geometry of the picture that the code was seen in.
  AVMetadataMachineReadableCodeObject(std::string type, std::optional<std::string> stringValue,
                                      const std::vector<CGPoint>& corners, const PictureGeometry& picture);

  /// UTF-8; nothing for a code without text.
  const std::optional<std::string>& stringValue() const { return stringValue_; }
  /// Point dictionaries (see CGPointMakeWithDictionaryRepresentation), clockwise from the code's own top
  /// left.
  const std::vector<NSDictionary>& corners() const { return corners_; }
  const PictureGeometry& picture() const { return picture_; }

 private:
  std::optional<std::string> stringValue_;
  std::vector<NSDictionary> corners_;
  PictureGeometry picture_;
};

using MetadataObjects = std::vector<std::shared_ptr<const AVMetadataObject>>;

}  // namespace nivlo
