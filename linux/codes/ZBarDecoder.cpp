#include "linux/codes/ZBarDecoder.hpp"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include <zbar.h>

#include "linux/codes/Code39.hpp"
#include "linux/codes/SymbologyTypes.hpp"

namespace nivlo {

namespace {

const char* typeOf(zbar::zbar_symbol_type_t type) {
  switch (type) {
    case zbar::ZBAR_QRCODE:
      return symbology::kQRCode;
    case zbar::ZBAR_UPCE:
      return symbology::kUPCE;
    case zbar::ZBAR_EAN8:
      return symbology::kEAN8;
    case zbar::ZBAR_EAN13:
      return symbology::kEAN13;
    case zbar::ZBAR_CODE39:
      return symbology::kCode39;
    default:
      return nullptr;
  }
}

bool isPlainASCII(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char byte) { return byte != 0 && byte < 0x80; });
}

/// The four corners that ZBar gives run counter-clockwise from the code's own top left.
Quad cornersOf(const zbar::Symbol& symbol) {
  const auto corner = [&](unsigned i) {
    return CGPoint{static_cast<double>(symbol.get_location_x(i)),
                   static_cast<double>(symbol.get_location_y(i))};
  };
  return {corner(0), corner(3), corner(2), corner(1)};
}

/// ZBar wants rows without padding, in memory that lives as long as its image.
std::vector<Reading> readWith(zbar::ImageScanner& scanner, const LumaPicture& picture) {
  LumaBuffer packed;
  packed.copyFrom(picture);
  zbar::Image image(picture.width, picture.height, "Y800", packed.row(0),
                    static_cast<unsigned long>(picture.width) * picture.height);
  scanner.scan(image);
  std::vector<Reading> readings;
  for (auto symbol = image.symbol_begin(); symbol != image.symbol_end(); ++symbol) {
    const char* type = typeOf(symbol->get_type());
    std::string text = symbol->get_data();
    if (!type || !isPlainASCII(text)) continue;
    if (type == symbology::kQRCode) {
      if (symbol->get_location_size() == 4)
        readings.push_back({type, std::move(text), cornersOf(*symbol), false});
      continue;
    }
    if (type == symbology::kCode39 && endsInMod43Check(text)) type = symbology::kCode39Mod43;
    if (type == symbology::kCode39) text = fullASCII(text).value_or(text);
    const double width = picture.width;
    const double height = picture.height;
    readings.push_back({type, std::move(text), {{{0, 0}, {width, 0}, {width, height}, {0, height}}}, true});
  }
  image.set_data(nullptr, 0);
  return readings;
}

}  // namespace

Decoder zbarQRCodes() {
  const auto scanner = std::make_shared<zbar::ImageScanner>();
  scanner->set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
  scanner->set_config(zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_ENABLE, 1);
  return {[scanner](const LumaPicture& picture) { return readWith(*scanner, picture); }, costOfPixels(4)};
}

Decoder zbarBars() {
  using namespace zbar;
  const auto scanner = std::make_shared<ImageScanner>();
  scanner->set_config(ZBAR_NONE, ZBAR_CFG_ENABLE, 0);
  for (const auto type : {ZBAR_UPCE, ZBAR_EAN8, ZBAR_EAN13, ZBAR_CODE39})
    scanner->set_config(type, ZBAR_CFG_ENABLE, 1);
  // Columns of upright bars hold nothing.
  scanner->set_config(ZBAR_NONE, ZBAR_CFG_X_DENSITY, 0);
  return {[scanner](const LumaPicture& picture) { return readWith(*scanner, picture); }, costOfPixels(4)};
}

}  // namespace nivlo
