#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <zint.h>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/decoders/ZXingDecoder.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"
#include "linux/codes/strategies/AztecStrategy.hpp"
#include "linux/codes/strategies/PictureFeatures.hpp"
#include "linux/codes/strategies/QRGridStrategy.hpp"
#include "tests/linux/codes/CodePictures.hpp"

namespace nivlo::test {

namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

constexpr int kEnlargement = 2;
constexpr int kModule = 3 * kEnlargement;
constexpr int kQuietZone = 10 * kModule;

LumaPicture asLuma(const GreyPicture& picture) {
  return {picture.pixels.data(), picture.width, picture.height, picture.width};
}

/// Returns the place on a folded cloth that a picture of this width shows at `at`.
CGPoint unfolded(CGPoint at, double width) {
  const double phase = 2 * std::numbers::pi / width;
  return {at.x + 0.012 * width * std::sin(1.1 * phase * at.y),
          at.y + 0.012 * width * std::sin(1.3 * phase * at.x)};
}

/// Returns the picture enlarged and printed on a folded cloth.
GreyPicture folded(const GreyPicture& flat) {
  GreyPicture result = greyPicture(flat.width * kEnlargement, flat.height * kEnlargement);
  for (int y = 0; y < result.height; ++y) {
    for (int x = 0; x < result.width; ++x) {
      const CGPoint from = unfolded({x + 0.5, y + 0.5}, result.width);
      const int column = std::clamp(static_cast<int>(from.x / kEnlargement), 0, flat.width - 1);
      const int row = std::clamp(static_cast<int>(from.y / kEnlargement), 0, flat.height - 1);
      result.pixels[y * result.width + x] = flat.pixels[row * flat.width + column];
    }
  }
  return result;
}

/// Returns the picture with dark modules grown by a pixel on each edge, or shrunk.
GreyPicture withInk(const GreyPicture& picture, bool more) {
  GreyPicture result = picture;
  for (int y = 1; y + 1 < picture.height; ++y) {
    for (int x = 1; x + 1 < picture.width; ++x) {
      std::uint8_t& pixel = result.pixels[y * picture.width + x];
      for (const int by : {-picture.width, -1, 1, picture.width}) {
        const std::uint8_t neighbour = picture.pixels[y * picture.width + x + by];
        pixel = more ? std::min(pixel, neighbour) : std::max(pixel, neighbour);
      }
    }
  }
  return result;
}

auto Text(const std::string& text) { return Field(&Reading::text, text); }

/// Expects the reading's corners where a code turned by quarters of a turn has them, clockwise from its own
/// top left.
void expectCorners(const Reading& reading, const GreyPicture& picture, int turns) {
  const double near = kQuietZone;
  const double far = picture.width - kQuietZone;
  const Quad sheet{{{near, near}, {far, near}, {far, far}, {near, far}}};
  for (int i = 0; i < 4; ++i) {
    const CGPoint seen = unfolded(reading.outline[i], picture.width);
    EXPECT_LT(distanceBetween(seen, sheet[(i + turns) % 4]), 1.5 * kModule)
        << reading.text << ", corner " << i;
  }
}

TEST(BentCodes, AreReadWhereAFlatGridDoesNotFit) {
  const std::string text = "https://example.org/cloth?folded=in+many+ways";
  const Decoder decoder = zxing(Symbologies::Matrix, Effort::Thorough);
  QRGridStrategy qr(decoder);
  AztecStrategy aztec(decoder);
  const auto expectRead = [&](ReadingStrategy& strategy, const GreyPicture& picture, int turns) {
    EXPECT_THAT(decoder.read(asLuma(picture)), IsEmpty()) << "too flat: ZXing alone reads it";
    PictureFeatures features(asLuma(picture));
    const std::vector<Reading> readings = strategy.read(features);
    ASSERT_THAT(readings, ElementsAre(Text(text)));
    expectCorners(readings[0], picture, turns);
  };
  GreyPicture qrCode = drawCode(BARCODE_QRCODE, text);
  GreyPicture aztecCode = drawCode(BARCODE_AZTEC, text);
  for (int turns = 0; turns < 4; ++turns) {
    expectRead(qr, folded(qrCode), turns);
    expectRead(aztec, folded(aztecCode), turns);
    qrCode = turned(qrCode);
    aztecCode = turned(aztecCode);
  }
  expectRead(qr, inverted(folded(qrCode)), 0);
}

TEST(BentCodes, SpreadOrFadedInkChangesNoModule) {
  const GreyPicture code = folded(drawCode(BARCODE_AZTEC, "ink"));
  AztecStrategy aztec(zxing(Symbologies::Aztec, Effort::Quick));
  for (const bool more : {true, false}) {
    const GreyPicture printed = withInk(code, more);
    PictureFeatures features(asLuma(printed));
    EXPECT_THAT(aztec.read(features), ElementsAre(Text("ink"))) << (more ? "spread" : "faded");
  }
}

TEST(AztecRunes, AreReadInEveryOrientationAndOtherAztecCodesAreNotTakenForThem) {
  AztecStrategy aztec({[](const LumaPicture&) { return std::vector<Reading>(); }, costOfPixels(0)});
  for (const char* number : {"0", "25", "170", "255"}) {
    GreyPicture rune = drawCode(BARCODE_AZRUNE, number);
    for (int turns = 0; turns < 4; ++turns, rune = turned(rune)) {
      const GreyPicture picture = folded(rune);
      PictureFeatures features(asLuma(picture));
      const std::vector<Reading> readings = aztec.read(features);
      const std::string digits = std::string(3 - std::string(number).size(), '0') + number;
      ASSERT_THAT(readings, ElementsAre(Text(digits)));
      expectCorners(readings[0], picture, turns);
    }
  }
  for (int layers = 1; layers <= 4; ++layers) {
    const GreyPicture compact = drawCode(BARCODE_AZTEC, "2", layers);
    PictureFeatures features(asLuma(compact));
    ASSERT_EQ(features.bullseyes().size(), 1u);
    EXPECT_THAT(aztec.read(features), IsEmpty()) << layers << " layers";
  }
}

}  // namespace

}  // namespace nivlo::test
