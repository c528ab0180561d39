// The codes that a metadata output reports, and the types they have.
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

// The types of machine-readable codes, with the standards that define them.

/// QR Code, ISO/IEC 18004.
inline constexpr const char* AVMetadataObjectTypeQRCode = "org.iso.QRCode";
/// PDF417, ISO/IEC 15438.
inline constexpr const char* AVMetadataObjectTypePDF417Code = "org.iso.PDF417";
/// UPC-E, ISO/IEC 15420. The text has eight digits, from the number system to the check digit.
inline constexpr const char* AVMetadataObjectTypeUPCECode = "org.gs1.UPC-E";
/// Aztec Code, ISO/IEC 24778.
inline constexpr const char* AVMetadataObjectTypeAztecCode = "org.iso.Aztec";
/// Code 39, ISO/IEC 16388, whose last character is not a valid check character.
inline constexpr const char* AVMetadataObjectTypeCode39Code = "org.iso.Code39";
/// Code 39 that ends in a valid modulo 43 check character. The text includes that character. One in 43 codes
/// without a check character looks like this by chance.
inline constexpr const char* AVMetadataObjectTypeCode39Mod43Code = "org.iso.Code39Mod43";
/// EAN-13, ISO/IEC 15420: thirteen digits. UPC-A has no type of its own; it is EAN-13 with a leading 0.
inline constexpr const char* AVMetadataObjectTypeEAN13Code = "org.gs1.EAN-13";
/// EAN-8, ISO/IEC 15420: eight digits.
inline constexpr const char* AVMetadataObjectTypeEAN8Code = "org.gs1.EAN-8";
/// Code 93, ANSI/AIM BC5.
inline constexpr const char* AVMetadataObjectTypeCode93Code = "com.intermec.Code93";
/// Code 128, ISO/IEC 15417.
inline constexpr const char* AVMetadataObjectTypeCode128Code = "org.iso.Code128";

/// All of the types above. A code reader reports no others; which of them a machine can find,
/// AVCaptureMetadataOutput::availableMetadataObjectTypes() tells.
inline constexpr std::array kMachineReadableCodeTypes = {
    AVMetadataObjectTypeQRCode,     AVMetadataObjectTypePDF417Code, AVMetadataObjectTypeUPCECode,
    AVMetadataObjectTypeAztecCode,  AVMetadataObjectTypeCode39Code, AVMetadataObjectTypeCode39Mod43Code,
    AVMetadataObjectTypeEAN13Code,  AVMetadataObjectTypeEAN8Code,   AVMetadataObjectTypeCode93Code,
    AVMetadataObjectTypeCode128Code};

/// Something that was found in the picture: what it is, and where. Immutable.
///
/// A code is an AVMetadataMachineReadableCodeObject. Test for that class instead of assuming it, for a later
/// version may report other things too.
class AVMetadataObject {
 public:
  AVMetadataObject(std::string type, CGRect bounds) : type_(std::move(type)), bounds_(bounds) {}
  virtual ~AVMetadataObject() = default;

  /// For a code, one of the types above.
  const std::string& type() const { return type_; }
  /// The smallest upright rectangle that holds the object, in the same coordinates as a code's corners.
  CGRect bounds() const { return bounds_; }

 private:
  std::string type_;
  CGRect bounds_;
};

/// A code that was read in the picture. Immutable.
///
/// In a report, coordinates are pixels of the picture as the camera delivered it, neither turned upright nor
/// mirrored. AVCaptureVideoPreviewLayer converts them to its own.
class AVMetadataMachineReadableCodeObject : public AVMetadataObject {
 public:
  /// Makes an object whose bounds enclose the corners. `picture` is the geometry of the picture that the code
  /// was read in.
  AVMetadataMachineReadableCodeObject(std::string type, std::optional<std::string> stringValue,
                                      const std::vector<CGPoint>& corners, const PictureGeometry& picture);

  /// The decoded text, in UTF-8; it may be empty, and may hold control characters, NUL
  /// among them. Absent for a code without text.
  const std::optional<std::string>& stringValue() const { return stringValue_; }
  /// The code's corners as dictionaries for CGPointMakeWithDictionaryRepresentation, clockwise from the
  /// corner that is at the top left when the code is upright.
  const std::vector<NSDictionary>& corners() const { return corners_; }
  /// The geometry of the picture that the code was read in.
  const PictureGeometry& picture() const { return picture_; }

 private:
  std::optional<std::string> stringValue_;
  std::vector<NSDictionary> corners_;
  PictureGeometry picture_;
};

/// The objects of one report.
using MetadataObjects = std::vector<std::shared_ptr<const AVMetadataObject>>;

}  // namespace nivlo
