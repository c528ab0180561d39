#include "linux/codes/decoders/ZXingDecoder.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <utf8proc.h>

#include "linux/codes/bars/BarOutline.hpp"
#include "linux/codes/decoders/Code39.hpp"
#include "linux/codes/decoders/CompactPDF417.hpp"
#include "linux/codes/decoders/ZXingVersion.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

using ZXing::BarcodeFormat;

const ZXing::BarcodeFormats kMatrixFormats =
    BarcodeFormat::QRCode | BarcodeFormat::PDF417 | BarcodeFormat::Aztec;
// UPC-A is read as EAN-13, with its leading 0, and so is not requested by itself.
const ZXing::BarcodeFormats kLinearFormats = BarcodeFormat::UPCE | BarcodeFormat::EAN8 |
                                             BarcodeFormat::EAN13 | BarcodeFormat::Code39 |
                                             BarcodeFormat::Code93 | BarcodeFormat::Code128;
// Each 1-D code costs a pass of its own, and few are in view at once.
constexpr int kMaxLinearCodes = 8;
// Scan lines that must agree before a 1-D code counts.
constexpr int kMinScanLines = 2;
// The cost of scanning one pixel for 1-D codes, in units of Decoder::cost.
constexpr double kLinearPixelCost = 1.2;
constexpr std::uint8_t kPaper = 255;
// A 1-D code that was read is painted over to this multiple of its outline.
constexpr double kErasedScale = 1.1;

/// Returns null for a symbology that is not one of the ten.
const char* typeOf(BarcodeFormat format, std::string_view text) {
  switch (format) {
    case BarcodeFormat::QRCode:
      return AVMetadataObjectTypeQRCode;
    case BarcodeFormat::PDF417:
      return AVMetadataObjectTypePDF417Code;
    case BarcodeFormat::Aztec:
      return AVMetadataObjectTypeAztecCode;
    case BarcodeFormat::UPCE:
      return AVMetadataObjectTypeUPCECode;
    case BarcodeFormat::EAN8:
      return AVMetadataObjectTypeEAN8Code;
    case BarcodeFormat::EAN13:
      return AVMetadataObjectTypeEAN13Code;
    case BarcodeFormat::Code39:
      return endsInMod43Check(text) ? AVMetadataObjectTypeCode39Mod43Code : AVMetadataObjectTypeCode39Code;
    case BarcodeFormat::Code93:
      return AVMetadataObjectTypeCode93Code;
    case BarcodeFormat::Code128:
      return AVMetadataObjectTypeCode128Code;
    default:
      return nullptr;
  }
}

std::string latin1ToUTF8(const ZXing::ByteArray& bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    utf8proc_uint8_t encoded[4];
    text.append(reinterpret_cast<char*>(encoded), utf8proc_encode_char(byte, encoded));
  }
  return text;
}

/// Replaces each invalid byte by U+FFFD. ZXing also encodes surrogates that are not part of a pair, which is
/// not valid UTF-8.
std::string withReplacementCharacters(std::string_view text) {
  std::string valid;
  while (!text.empty()) {
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    valid += length > 0 ? text.substr(0, length) : std::string_view("\xef\xbf\xbd");
    text.remove_prefix(length > 0 ? length : 1);
  }
  return valid;
}

std::string textOf(const ZXing::Result& result) {
  const std::string text = result.text();
  // ZXing returns no text if the code names a character set that it does not know.
  if (text.empty() && !result.bytes().empty()) {
    return latin1ToUTF8(result.bytes());
  }
  return withReplacementCharacters(text);
}

/// Debian builds ZXing with assertions, and one of them aborts when ZXing compares two 1-D codes. It does
/// that when it downscales by itself or is asked for more than one 1-D code, so neither may ever be
/// requested.
ZXingOptions optionsFor(ZXing::BarcodeFormats formats, Effort effort) {
  ZXingOptions options = plainOptions();
  options.setFormats(formats);
  options.setTryDownscale(false);
  options.setTryHarder(effort != Effort::Quick);
  options.setTryRotate(effort == Effort::Thorough);
  return options;
}

ZXing::ImageView imageOf(const LumaPicture& picture) {
  return {picture.pixels, picture.width, picture.height, ZXing::ImageFormat::Lum, picture.stride};
}

std::optional<ZXing::Result> readOneLinear(const ZXing::ImageView& image, ZXing::BarcodeFormats formats,
                                           Effort effort) {
  ZXingOptions options = optionsFor(formats, effort);
  options.setMaxNumberOfSymbols(1);
  options.setMinLineCount(kMinScanLines);
  ZXing::Results results = ZXing::ReadBarcodes(image, options);
  if (results.empty() || !results.front().isValid()) {
    return std::nullopt;
  }
  return std::move(results.front());
}

CGPoint middle(ZXing::PointI first, ZXing::PointI second) {
  return {(first.x + second.x) / 2.0, (first.y + second.y) / 2.0};
}

/// Returns nothing for a symbology that is not one of the ten.
std::optional<Reading> linearReading(const LumaPicture& picture, const ZXing::Result& result) {
  const ZXing::Position& at = result.position();
  const Quad outline =
      barOutline(picture, middle(at.topLeft(), at.bottomLeft()), middle(at.topRight(), at.bottomRight()));
  std::string text = textOf(result);
  const char* type = typeOf(result.format(), text);
  if (!type) {
    return std::nullopt;
  }
  if (type == AVMetadataObjectTypeCode39Code) {
    text = fullASCII(text).value_or(text);
  }
  return Reading{type, std::move(text), outline, true};
}

/// Finds one code after the other, painting over each so that the next pass finds another.
std::vector<Reading> readLinear(const LumaPicture& picture, Effort effort) {
  std::vector<Reading> readings;
  LumaBuffer copy;
  LumaPicture remaining = picture;
  while (readings.size() < kMaxLinearCodes) {
    const auto result = readOneLinear(imageOf(remaining), kLinearFormats, effort);
    if (!result) {
      break;
    }
    std::optional<Reading> reading = linearReading(remaining, *result);
    if (!reading) {
      break;
    }
    if (readings.empty()) {
      copy.copyFrom(picture);
      remaining = copy.picture();
    }
    copy.fill(scaledAboutCentre(reading->outline, kErasedScale), kPaper);
    readings.push_back(std::move(*reading));
  }
  return readings;
}

ZXing::BarcodeFormats matrixFormats(Symbologies symbologies) {
  switch (symbologies) {
    case Symbologies::All:
    case Symbologies::Matrix:
      return kMatrixFormats;
    case Symbologies::Bars:
      return BarcodeFormat::PDF417;
    case Symbologies::Aztec:
      return BarcodeFormat::Aztec;
    case Symbologies::Linear:
      break;
  }
  return {};
}

std::vector<Reading> readMatrix(const LumaPicture& picture, ZXing::BarcodeFormats formats, Effort effort) {
  std::vector<Reading> readings;
  for (const ZXing::Result& result : ZXing::ReadBarcodes(imageOf(picture), optionsFor(formats, effort))) {
    const std::string text = textOf(result);
    const char* type = typeOf(result.format(), text);
    if (!type || !result.isValid()) {
      continue;
    }
    Quad outline;
    for (int i = 0; i < 4; ++i) {
      const ZXing::PointI corner = result.position()[i];
      outline[i] = {static_cast<double>(corner.x), static_cast<double>(corner.y)};
    }
    // ZXing reports a compact PDF417, which has no stop pattern, with its two right corners at one point.
    const bool hasNoRightEdge = result.position()[1] == result.position()[2];
    if (result.format() == BarcodeFormat::PDF417 && hasNoRightEdge) {
      outline = compactPDF417Outline(picture, outline[0], outline[3]);
    }
    readings.push_back({type, text, outline, false});
  }
  return readings;
}

std::vector<Reading> readAll(const LumaPicture& picture, Symbologies symbologies, Effort effort) {
  std::vector<Reading> readings;
  const ZXing::BarcodeFormats matrix = matrixFormats(symbologies);
  if (!matrix.empty()) {
    readings = readMatrix(picture, matrix, effort);
  }
  if (symbologies == Symbologies::Matrix || symbologies == Symbologies::Aztec) {
    return readings;
  }
  for (Reading& reading : readLinear(picture, effort)) {
    readings.push_back(std::move(reading));
  }
  return readings;
}

/// Returns in how many of so many rows or columns ZXing looks for 1-D codes.
int scannedLines(int lines) { return lines / std::max(1, lines >> 8); }

}  // namespace

Decoder zxing(Symbologies symbologies, Effort effort) {
  const bool readsLinear = symbologies != Symbologies::Matrix && symbologies != Symbologies::Aztec;
  const bool readsMatrix = symbologies != Symbologies::Linear;
  const auto cost = [=](int width, int height) {
    const double pixels = static_cast<double>(width) * height;
    double lines = 0;
    if (readsLinear && effort != Effort::Quick) {
      lines += static_cast<double>(width) * scannedLines(height);
    }
    if (readsLinear && effort == Effort::Thorough) {
      lines += static_cast<double>(height) * scannedLines(width);
    }
    return (readsMatrix ? pixels : 0) + kLinearPixelCost * lines;
  };
  return {[=](const LumaPicture& picture) { return readAll(picture, symbologies, effort); }, cost};
}

}  // namespace nivlo
