#include "linux/codes/decoders/ZXingDecoder.hpp"

#define ZX_USE_UTF8
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <ZXing/ReadBarcode.h>
#include <utf8proc.h>

#include "linux/codes/bars/BarOutline.hpp"
#include "linux/codes/decoders/Code39.hpp"
#include "linux/codes/decoders/CompactPDF417.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

using ZXing::BarcodeFormat;

const ZXing::BarcodeFormats kMatrixFormats =
    BarcodeFormat::QRCode | BarcodeFormat::PDF417 | BarcodeFormat::Aztec;
// UPC-A is not asked for by itself: as EAN-13 it comes with its leading 0.
const ZXing::BarcodeFormats kLinearFormats = BarcodeFormat::UPCE | BarcodeFormat::EAN8 |
                                             BarcodeFormat::EAN13 | BarcodeFormat::Code39 |
                                             BarcodeFormat::Code93 | BarcodeFormat::Code128;
// Labels in view at once are few; each costs a pass.
constexpr int kMostLinearCodes = 8;
// That must agree.
constexpr int kScanLines = 2;
constexpr double kCostOfLinePixel = 1.2;
constexpr std::uint8_t kPaper = 255;

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

/// ZXing passes on surrogates that a code holds alone, which UTF-8 has no form for.
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
  // ZXing gives nothing at all where a code names a character set that it does not know.
  if (text.empty() && !result.bytes().empty()) {
    return latin1ToUTF8(result.bytes());
  }
  return withReplacementCharacters(text);
}

/// Debian's ZXing is built with assertions, and one of them ends the process when it compares two 1-D codes.
/// That happens in its own down-scaling and whenever more than one 1-D code is asked for, so neither is ever
/// done.
ZXing::DecodeHints hintsFor(ZXing::BarcodeFormats formats, Effort effort) {
  ZXing::DecodeHints hints;
  hints.setFormats(formats);
  hints.setTryDownscale(false);
  hints.setTryHarder(effort != Effort::Quick);
  hints.setTryRotate(effort == Effort::Thorough);
  return hints;
}

ZXing::ImageView viewOf(const LumaPicture& picture) {
  return {picture.pixels, picture.width, picture.height, ZXing::ImageFormat::Lum, picture.stride};
}

std::optional<ZXing::Result> readOneLinear(const ZXing::ImageView& view, ZXing::BarcodeFormats formats,
                                           Effort effort) {
  ZXing::DecodeHints hints = hintsFor(formats, effort);
  hints.setMaxNumberOfSymbols(1);
  hints.setMinLineCount(kScanLines);
  ZXing::Results results = ZXing::ReadBarcodes(view, hints);
  if (results.empty() || !results.front().isValid()) {
    return std::nullopt;
  }
  return std::move(results.front());
}

CGPoint middle(ZXing::PointI first, ZXing::PointI second) {
  return {(first.x + second.x) / 2.0, (first.y + second.y) / 2.0};
}

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

std::vector<Reading> readLinear(const LumaPicture& picture, Effort effort) {
  std::vector<Reading> readings;
  LumaBuffer rest;
  LumaPicture view = picture;
  while (readings.size() < kMostLinearCodes) {
    const auto result = readOneLinear(viewOf(view), kLinearFormats, effort);
    if (!result) {
      break;
    }
    std::optional<Reading> reading = linearReading(view, *result);
    if (!reading) {
      break;
    }
    if (readings.empty()) {
      rest.copyFrom(picture);
      view = rest.picture();
    }
    rest.fill(scaledAboutCentre(reading->outline, 1.1), kPaper);
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
  for (const ZXing::Result& result : ZXing::ReadBarcodes(viewOf(picture), hintsFor(formats, effort))) {
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

/// Of so many rows or columns, those in which ZXing looks for 1-D codes.
int linesLookedAt(int lines) { return lines / std::max(1, lines >> 8); }

}  // namespace

Decoder zxing(Symbologies symbologies, Effort effort) {
  const bool readsLinear = symbologies != Symbologies::Matrix && symbologies != Symbologies::Aztec;
  const bool readsMatrix = symbologies != Symbologies::Linear;
  const auto cost = [=](int width, int height) {
    const double pixels = static_cast<double>(width) * height;
    double lines = 0;
    if (readsLinear && effort != Effort::Quick) {
      lines += static_cast<double>(width) * linesLookedAt(height);
    }
    if (readsLinear && effort == Effort::Thorough) {
      lines += static_cast<double>(height) * linesLookedAt(width);
    }
    return (readsMatrix ? pixels : 0) + kCostOfLinePixel * lines;
  };
  return {[=](const LumaPicture& picture) { return readAll(picture, symbologies, effort); }, cost};
}

}  // namespace nivlo
