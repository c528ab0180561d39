#define ZX_USE_UTF8 1  // must precede ZXing's headers; without it texts are not UTF-8

#include "linux/camera/demo/CodeCards.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

namespace nivlo {
namespace {

struct CardDesign {
  ZXing::BarcodeFormat format;
  std::string title;
  std::string subtitle;
  unsigned color;
  std::string text;
};

constexpr int kShadow = 26;
constexpr int kHeader = 92;
constexpr int kMargin = 22;
constexpr int kFooter = 48;
constexpr int kNarrowest = 440;
constexpr int kWidestCode = 560;
constexpr int kBarHeight = 210;

/// The optional check character of Code 39 (ISO/IEC 16388): the sum of the characters' values modulo 43.
char checkCharacter(std::string_view text) {
  constexpr std::string_view alphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
  std::size_t sum = 0;
  for (const char character : text) {
    sum += alphabet.find(character);
  }
  return alphabet[sum % alphabet.size()];
}

std::vector<CardDesign> designs() {
  using enum ZXing::BarcodeFormat;
  const std::string tag = "LENS 7Q";
  return {
      {QRCode, "Come and see", "a look round the garden", 0x2F6FDE, "https://example.org/garden"},
      {EAN13, "Evening Blend", "coffee beans, 250 g", 0x8A4B2D, "2001234567893"},
      {PDF417, "Boarding pass", "DOE / JANE   gate 12   seat 4A", 0x0E7C86, "DOE/JANE GATE 12 SEAT 4A"},
      {EAN8, "Sea salt", "dark chocolate", 0x34495E, "20123451"},
      {Aztec, "Harbour line", "two adults, any day", 0xC0392B, "HARBOUR LINE 2 ADULTS 4711"},
      {UPCE, "Lemon fizz", "330 ml", 0xD99A00, "01234565"},
      {Code128, "Parcel", "handle with care", 0x6C4AB6, "PARCEL-2041"},
      {Code39, "Top shelf", "spare parts", 0x2E7D4F, "SHELF-42B"},
      {Code39, "Camera bag", "with a check character", 0xB03A6E, tag + checkCharacter(tag)},
      {Code93, "Crate", "keep upright", 0x4A6572, "CRATE93-17"},
  };
}

bool isLinear(ZXing::BarcodeFormat format) {
  return ZXing::BarcodeFormats(ZXing::BarcodeFormat::LinearCodes).testFlag(format);
}

/// The code in black on a transparent layer, with a whole number of pixels to each module.
Layer drawCode(const CardDesign& design) {
  const bool linear = isLinear(design.format);
  const auto bits = ZXing::MultiFormatWriter(design.format).setMargin(0).encode(design.text, 1, 1);
  const bool square = bits.width() == bits.height();
  const int scale = std::clamp((square ? 300 : kWidestCode) / bits.width(), 1, 6 + 8 * square);
  const int height = linear ? kBarHeight : bits.height() * scale;
  auto layer = makeLayer(bits.width() * scale, height);
  const auto cairo = drawOn(layer);
  cairo_set_antialias(cairo.get(), CAIRO_ANTIALIAS_NONE);
  for (int y = 0; y < bits.height(); ++y) {
    for (int x = 0; x < bits.width(); ++x) {
      if (bits.get(x, y)) {
        cairo_rectangle(cairo.get(), x * scale, y * scale, scale, linear ? kBarHeight : scale);
      }
    }
  }
  setPaint(cairo.get(), {0x101418});
  cairo_fill(cairo.get());
  return layer;
}

void drawText(cairo_t* cairo, Point baseline, const char* family, cairo_font_weight_t weight, double size,
              const std::string& text) {
  cairo_select_font_face(cairo, family, CAIRO_FONT_SLANT_NORMAL, weight);
  cairo_set_font_size(cairo, size);
  cairo_move_to(cairo, baseline.x, baseline.y);
  cairo_show_text(cairo, text.c_str());
}

void drawCentered(cairo_t* cairo, double center, double baseline, double size, const std::string& text) {
  cairo_select_font_face(cairo, "monospace", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cairo, size);
  cairo_text_extents_t extents;
  cairo_text_extents(cairo, text.c_str(), &extents);
  cairo_move_to(cairo, center - extents.x_advance / 2, baseline);
  cairo_show_text(cairo, text.c_str());
}

void drawPaper(cairo_t* cairo, const CardDesign& design, int width, int height) {
  for (int i = kShadow; i > 0; i -= 2) {
    setPaint(cairo, {0x0A0612, 0.022});
    fillRounded(cairo, kShadow - i + 4, kShadow - i + 12, width + 2 * i - 8, height + 2 * i - 12, 20 + i);
  }
  setPaint(cairo, {design.color});
  fillRounded(cairo, kShadow, kShadow, width, height, 20);
  setPaint(cairo, {0xFDFCF8});
  fillRectangle(cairo, kShadow, kShadow + kHeader, width, height - kHeader - 20);
  fillRounded(cairo, kShadow, kShadow + height - 40, width, 40, 20);
  setPaint(cairo, {0xFFFFFF, 0.16});
  fillEllipse(cairo, {kShadow + width - 58.0, kShadow + kHeader / 2.0}, 28, 28);
  setPaint(cairo, {0xFFFFFF, 0.9});
  fillEllipse(cairo, {kShadow + width - 58.0, kShadow + kHeader / 2.0}, 11, 11);
  setPaint(cairo, {0xFFFFFF});
  drawText(cairo, {kShadow + 28.0, kShadow + 45.0}, "sans", CAIRO_FONT_WEIGHT_BOLD, 32, design.title);
  setPaint(cairo, {0xFFFFFF, 0.82});
  drawText(cairo, {kShadow + 28.0, kShadow + 73.0}, "sans", CAIRO_FONT_WEIGHT_NORMAL, 19, design.subtitle);
}

CodeCard drawCard(const CardDesign& design) {
  const auto code = drawCode(design);
  const int codeWidth = cairo_image_surface_get_width(code.get());
  const int codeHeight = cairo_image_surface_get_height(code.get());
  const int width = std::max(kNarrowest, codeWidth + 80);
  const int height = kHeader + kMargin + codeHeight + kFooter;
  CodeCard card{makeLayer(width + 2 * kShadow, height + 2 * kShadow), {}};
  const auto cairo = drawOn(card.picture);
  drawPaper(cairo.get(), design, width, height);
  const Point topLeft{kShadow + (width - codeWidth) / 2.0, kShadow + kHeader + kMargin + 0.0};
  paintLayer(cairo.get(), code, topLeft);
  setPaint(cairo.get(), {0x4A4F57});
  drawCentered(cairo.get(), kShadow + width / 2.0, kShadow + height - 17, 20, design.text);
  card.codeCenter = {topLeft.x + codeWidth / 2.0, topLeft.y + codeHeight / 2.0};
  return card;
}

}  // namespace

std::vector<CodeCard> drawCodeCards() {
  std::vector<CodeCard> cards;
  for (const auto& design : designs()) {
    cards.push_back(drawCard(design));
  }
  return cards;
}

}  // namespace nivlo
