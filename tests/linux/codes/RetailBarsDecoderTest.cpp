#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>
#include <zint.h>

#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/retail/RetailBarsDecoder.hpp"
#include "tests/linux/codes/CodePictures.hpp"

namespace nivlo::test {

namespace {

/// Reads the code as a camera sees it from too far away: 1.3 pixels per module, out of focus, noisy and lit
/// from one side. Returns its type and text, with "?" after the type if the reading is not certain and "<" at
/// the end if the code runs backwards.
std::string readFromAfar(const GreyPicture& code) {
  constexpr double kScale = 3 / 1.3, kBlur = 0.6 * 3;
  GreyPicture strip = greyPicture(static_cast<int>(code.width / kScale), 12);
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, 4);
  for (std::size_t i = 0; i < strip.pixels.size(); ++i) {
    const double centre = (static_cast<double>(i % strip.width) + 0.5) * kScale;
    double sum = 0, weights = 0;
    for (int x = 0; x < code.width; ++x) {
      const double weight = std::exp(-std::pow((x + 0.5 - centre) / kBlur, 2) / 2);
      sum += weight * code.pixels[code.height / 2 * code.width + x];
      weights += weight;
    }
    const double light = 0.3 + 0.4 * centre / code.width;
    strip.pixels[i] = static_cast<std::uint8_t>((30 + sum / weights) * light + noise(random));
  }
  std::string all;
  for (const Reading& reading :
       retailBars().read({strip.pixels.data(), strip.width, strip.height, strip.width})) {
    all += reading.type + (reading.isCertain ? " " : "? ") + reading.text +
           (reading.outline[0].x > reading.outline[1].x ? "<" : "");
  }
  return all;
}

TEST(RetailBarsDecoder, ReadsCodesTooBlurredForEdgeDetectionInBothDirections) {
  for (const auto& [symbology, digits, expected] :
       {std::tuple{BARCODE_EANX, "400638133393", "org.gs1.EAN-13 4006381333931"},
        {BARCODE_UPCA, "03600029145", "org.gs1.EAN-13 0036000291452"},
        {BARCODE_EANX, "9638507", "org.gs1.EAN-8 96385074"},
        {BARCODE_UPCE, "0496580", "org.gs1.UPC-E 04965802"},
        {BARCODE_UPCE, "1123453", "org.gs1.UPC-E 11234538"}}) {
    EXPECT_EQ(readFromAfar(drawCode(symbology, digits)), expected);
    EXPECT_EQ(readFromAfar(turned(turned(drawCode(symbology, digits)))), expected + std::string("<"));
  }
}

TEST(RetailBarsDecoder, ReadsNothingFromOtherSymbologiesWrongCheckDigitsOrNoise) {
  for (const int other : {BARCODE_C25INTER, BARCODE_CODE128, BARCODE_CODE39, BARCODE_CODE93, BARCODE_DBAR_OMN,
                          BARCODE_PDF417}) {
    for (const char* digits : {"1234567890", "00000000000000", "97848723488"}) {
      EXPECT_EQ(readFromAfar(drawCode(other, digits)), "") << other;
    }
  }
  EXPECT_EQ(readFromAfar(drawCode(BARCODE_CODABAR, "A40156B")), "");
  for (const auto& [digits, others] : {std::pair{"400638133393", "400638271828"}, {"9638507", "9738507"}}) {
    GreyPicture code = drawCode(BARCODE_EANX, digits);
    GreyPicture leftHalf = drawCode(BARCODE_EANX, others);
    for (int i = 0; i < code.width * code.height; ++i) {
      if (i % code.width < code.width / 2) {
        code.pixels[i] = leftHalf.pixels[i];
      }
    }
    EXPECT_EQ(readFromAfar(code), "") << "wrong check digit";
  }
  GreyPicture noise = greyPicture(400, 12);
  std::generate(noise.pixels.begin(), noise.pixels.end(), std::mt19937(1));
  EXPECT_EQ(readFromAfar(noise) + readFromAfar(greyPicture(400, 12)), "");
}

}  // namespace

}  // namespace nivlo::test
