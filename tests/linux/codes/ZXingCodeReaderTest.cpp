#include <climits>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <zint.h>

#include "linux/codes/decoders/ZXingVersion.hpp"
#include "tests/linux/codes/CodePictures.hpp"
#include "tests/support/codes/ZXingCodeReader.hpp"

namespace nivlo::test {

namespace {

using namespace std::string_literals;
using testing::ElementsAre;

/// Looks at the frame up to ten times, a second's worth, and returns what the first successful look finds.
std::vector<DecodedCode> firstFind(const VideoFrame& frame) {
  const auto reader = makeZXingCodeReaderDriver()->makeReader();
  for (int look = 0; look < 10; ++look) {
    std::vector<DecodedCode> codes = reader->look(frame);
    if (!codes.empty()) {
      return codes;
    }
  }
  return {};
}

/// Puts the code in the middle of a desk.
GreyPicture onDesk(const GreyPicture& code) {
  GreyPicture scene = greyPicture(1280, 720);
  place(scene, code, (scene.width - code.width) / 2, (scene.height - code.height) / 2);
  return scene;
}

MATCHER_P2(Code, type, text, "") { return arg.type == type && arg.text == text; }

struct Sample {
  const char* type;
  int symbology;
  std::string contents;
  std::string text;
  int option = 0;
};

const std::vector<Sample> kSamples = {
    {"org.iso.QRCode", BARCODE_QRCODE, "https://example.org/\xc3\xa4", "https://example.org/\xc3\xa4"},
    {"org.iso.PDF417", BARCODE_PDF417, "Boarding DOE/JOHN 12345", "Boarding DOE/JOHN 12345"},
    {"org.gs1.UPC-E", BARCODE_UPCE, "0496580", "04965802"},
    {"org.iso.Aztec", BARCODE_AZTEC, "Ticket 0815", "Ticket 0815"},
    {"org.iso.Code39", BARCODE_CODE39, "ABC-1234", "ABC-1234"},
    {"org.iso.Code39Mod43", BARCODE_CODE39, "ABC-1234", "ABC-1234-", 1},
    {"org.gs1.EAN-13", BARCODE_EANX, "400638133393", "4006381333931"},
    {"org.gs1.EAN-13", BARCODE_UPCA, "03600029145", "0036000291452"},
    {"org.gs1.EAN-8", BARCODE_EANX, "9638507", "96385074"},
    {"com.intermec.Code93", BARCODE_CODE93, "TEST93XY", "TEST93XY"},
    {"org.iso.Code128", BARCODE_CODE128, "Parcel 00340434", "Parcel 00340434"},
};

TEST(ZXingCodeReader, OffersAndReadsExactlyTheTenSymbologies) {
  EXPECT_THAT(makeZXingCodeReaderDriver()->availableTypes(),
              ElementsAre("org.iso.QRCode", "org.iso.PDF417", "org.gs1.UPC-E", "org.iso.Aztec",
                          "org.iso.Code39", "org.iso.Code39Mod43", "org.gs1.EAN-13", "org.gs1.EAN-8",
                          "com.intermec.Code93", "org.iso.Code128"));
  for (const Sample& sample : kSamples) {
    const GreyPicture code = drawCode(sample.symbology, sample.contents, sample.option);
    EXPECT_THAT(firstFind(frameOf(onDesk(code))), ElementsAre(Code(sample.type, sample.text)));
  }
  for (const int other : {BARCODE_DATAMATRIX, BARCODE_CODABAR, BARCODE_C25INTER, BARCODE_MICROQR}) {
    EXPECT_THAT(firstFind(frameOf(onDesk(drawCode(other, other == BARCODE_CODABAR ? "A123B" : "1234")))),
                testing::IsEmpty());
  }
}

TEST(ZXingCodeReader, ReadsTheSameTextFromEveryPixelFormatAndPaddedRows) {
  const GreyPicture scene = onDesk(drawCode(BARCODE_CODE128, "same everywhere"));
  for (const PixelFormat format : {PixelFormat::NV12, PixelFormat::I420, PixelFormat::YUY2, PixelFormat::BGRx,
                                   PixelFormat::RGBx, PixelFormat::RGB}) {
    for (const int padding : {0, 52}) {
      EXPECT_THAT(firstFind(frameOf(scene, format, padding)),
                  ElementsAre(Code("org.iso.Code128", "same everywhere")))
          << static_cast<int>(format) << " " << padding;
    }
  }
}

TEST(ZXingCodeReader, KeepsTextByteForByte) {
  const auto textOf = [](const GreyPicture& code) {
    const auto codes = firstFind(frameOf(onDesk(code)));
    return codes.size() == 1 ? codes[0].text : "not exactly one code"s;
  };
  EXPECT_EQ(textOf(drawCode(BARCODE_QRCODE, "a\0b"s)), "a\0b"s);
  EXPECT_EQ(textOf(drawCode(BARCODE_QRCODE, "\xff\xfe\x80 A"s)), "\u00ff\u00fe\u0080 A");
  // A QR code without any text, which no writer agrees to draw.
  const std::vector<std::string_view> empty = {
      "#######..#.##.#######", "#.....#..###..#.....#", "#.###.#.##.##.#.###.#", "#.###.#..#.#..#.###.#",
      "#.###.#...#.#.#.###.#", "#.....#.....#.#.....#", "#######.#.#.#.#######", "........##.##........",
      "###.########.##...#..", ".####..#.#....#...#..", "#.##.######.#...#...#", "...#.#.#..#...#...#..",
      "......#.##..#.#.#.#.#", "........#.##.#.#.#.#.", "#######.#.##.###.###.", "#.....#.##.###.###.##",
      "#.###.#.#..#.###.###.", "#.###.#..##...#...##.", "#.###.#.###.#...#...#", "#.....#.#.....#...##.",
      "#######.###.#.#.#.#.#"};
  const auto codes = firstFind(frameOf(onDesk(drawModules(empty))));
  if (kReadsEmptyCodes) {
    EXPECT_THAT(codes, ElementsAre(Code("org.iso.QRCode", "")));
  } else {
    EXPECT_THAT(codes, testing::IsEmpty());
  }
}

TEST(ZXingCodeReader, ReadsLightOnDark) {
  EXPECT_THAT(firstFind(frameOf(inverted(onDesk(drawCode(BARCODE_QRCODE, "night"))))),
              ElementsAre(Code("org.iso.QRCode", "night")));
}

/// Puts the code on a desk, with its middle at `centre`, turned clockwise, and with edges as soft as a lens
/// draws them.
GreyPicture onDeskTurned(double degrees, const GreyPicture& code, CGPoint centre) {
  // Each pixel is the mean of 4 x 4 samples from 2 x 2 pixels.
  constexpr int kPerRow = 4;
  GreyPicture scene = greyPicture(1280, 720);
  const double cosine = std::cos(degrees * M_PI / 180);
  const double sine = std::sin(degrees * M_PI / 180);
  const double reach = std::hypot(code.width, code.height) / 2 + 2;
  for (int i = 0; i < scene.width * scene.height; ++i) {
    if (std::hypot(i % scene.width - centre.x, i / scene.width - centre.y) > reach) {
      continue;
    }
    int sum = 0;
    for (int sample = 0; sample < kPerRow * kPerRow; ++sample) {
      const double x = i % scene.width + (sample % kPerRow + 0.5) * 2 / kPerRow - 0.5 - centre.x;
      const double y = i / scene.width + (sample / kPerRow + 0.5) * 2 / kPerRow - 0.5 - centre.y;
      const int u = static_cast<int>(std::floor(cosine * x + sine * y + code.width / 2.0));
      const int v = static_cast<int>(std::floor(-sine * x + cosine * y + code.height / 2.0));
      const bool inside = u >= 0 && v >= 0 && u < code.width && v < code.height;
      sum += inside ? code.pixels[v * code.width + u] : scene.pixels[i];
    }
    scene.pixels[i] = static_cast<std::uint8_t>(sum / (kPerRow * kPerRow));
  }
  return scene;
}

TEST(ZXingCodeReader, ReadsCodesAtAnyAngleAnywhereWithinTenLooks) {
  const CGPoint centre{420, 330};
  for (const auto& [symbology, type] :
       {std::pair{BARCODE_CODE128, "org.iso.Code128"}, std::pair{BARCODE_PDF417, "org.iso.PDF417"},
        std::pair{BARCODE_PDF417COMP, "org.iso.PDF417"}, std::pair{BARCODE_AZTEC, "org.iso.Aztec"}}) {
    const GreyPicture code = drawCode(symbology, "askew");
    for (const double degrees : {0.0, 20.0, 45.0, 70.0, 90.0, 135.0}) {
      const auto codes = firstFind(frameOf(onDeskTurned(degrees, code, centre)));
      ASSERT_THAT(codes, ElementsAre(Code(type, "askew"))) << symbology << " " << degrees;
      const double cosine = std::cos(degrees * M_PI / 180);
      const double sine = std::sin(degrees * M_PI / 180);
      for (int i = 0; i < 4; ++i) {
        const CGPoint corner = codes[0].corners[i];
        const double u = cosine * (corner.x - centre.x) + sine * (corner.y - centre.y);
        const double v = -sine * (corner.x - centre.x) + cosine * (corner.y - centre.y);
        EXPECT_NEAR(std::abs(u), code.width / 2.0 - 30, 15) << type << " " << degrees << " " << i;
        EXPECT_EQ(u < 0, i == 0 || i == 3) << type << " " << degrees << " " << i;
        EXPECT_EQ(v < 0, i < 2) << type << " " << degrees << " " << i;
        EXPECT_GT(std::abs(v), code.height / 16.0) << type << " " << degrees << " " << i;
      }
    }
  }
}

TEST(ZXingCodeReader, ReadsATiltedWidePDF417WhoseEndsAloneShowBars) {
  std::string text;
  for (int i = 0; i < 40; ++i) {
    text += "wide" + std::to_string(i * i);
  }
  constexpr int kColumns = 8;
  const GreyPicture code = drawCode(BARCODE_PDF417, text, kColumns);
  for (const double degrees : {12.0, -12.0, 102.0}) {
    EXPECT_THAT(firstFind(frameOf(onDeskTurned(degrees, code, {620, 360}))),
                ElementsAre(Code("org.iso.PDF417", text)))
        << degrees;
  }
}

TEST(ZXingCodeReader, ReadsALightOnDarkAztecCodeOffCentre) {
  const GreyPicture code = inverted(drawCode(BARCODE_AZTEC, "night train"));
  EXPECT_THAT(firstFind(frameOf(onDeskTurned(30, code, {900, 250}))),
              ElementsAre(Code("org.iso.Aztec", "night train")));
}

TEST(ZXingCodeReader, CornersStartAtTheCodesOwnTopLeftHoweverItIsTurned) {
  for (const int symbology : {BARCODE_QRCODE, BARCODE_CODE128}) {
    GreyPicture code = drawCode(symbology, "which way up?");
    for (int quarter = 0; quarter < 4; ++quarter, code = turned(code)) {
      const auto codes = firstFind(frameOf(onDesk(code)));
      ASSERT_EQ(codes.size(), 1u);
      for (int i = 0; i < 4; ++i) {
        const CGPoint corner = codes[0].corners[(i + 4 - quarter) % 4];
        EXPECT_EQ(corner.x < 640, i == 0 || i == 3) << symbology << " " << quarter << " " << i;
        EXPECT_EQ(corner.y < 360, i < 2) << symbology << " " << quarter << " " << i;
      }
    }
  }
}

TEST(ZXingCodeReader, TwoEqualLabelsAreTwoCodesAndDoNotEndTheProcess) {
  for (const auto& [symbology, contents] :
       {std::pair{BARCODE_EANX, "400638133393"}, std::pair{BARCODE_CODE128, "twin"},
        std::pair{BARCODE_QRCODE, "twin"}}) {
    const GreyPicture label = drawCode(symbology, contents);
    GreyPicture scene = greyPicture(1280, 720);
    place(scene, label, 40, 30);
    place(scene, label, 1240 - label.width, 690 - label.height);
    const auto codes = firstFind(frameOf(scene));
    ASSERT_EQ(codes.size(), 2u) << contents;
    EXPECT_EQ(codes[0].text, codes[1].text);
    EXPECT_GT(std::abs(codes[0].corners[0].x - codes[1].corners[0].x), 200);
  }
}

TEST(ZXingCodeReader, TheCodeNearestToTheCentreComesLast) {
  for (const int near : {0, 1, 2}) {
    GreyPicture scene = greyPicture(1280, 720);
    const std::string texts[] = {"first", "second", "third"};
    for (int i = 0; i < 3; ++i) {
      const GreyPicture code = drawCode(i == 1 ? BARCODE_CODE128 : BARCODE_QRCODE, texts[i]);
      if (i == near) {
        place(scene, code, 640 - code.width / 2, 360 - code.height / 2);
      } else {
        place(scene, code, i == (near + 1) % 3 ? 10 : 1270 - code.width, 10);
      }
    }
    const auto codes = firstFind(frameOf(scene));
    ASSERT_EQ(codes.size(), 3u);
    EXPECT_EQ(codes.back().text, texts[near]);
  }
}

TEST(ZXingCodeReader, FramesWithoutAPictureYieldNoCodes) {
  const auto reader = makeZXingCodeReaderDriver()->makeReader();
  const GreyPicture scene = onDesk(drawCode(BARCODE_QRCODE, "whole"));
  const auto lookTenTimes = [&](const VideoFrame& frame) {
    for (int look = 0; look < 10; ++look) {
      EXPECT_THAT(reader->look(frame), testing::IsEmpty());
    }
  };
  for (const PixelFormat format :
       {PixelFormat::NV12, PixelFormat::YUY2, PixelFormat::RGB, PixelFormat::BGRx}) {
    const VideoFrame whole = frameOf(scene, format);
    for (const auto& [width, height] : {std::pair{0, 720}, std::pair{1280, 0}, std::pair{-1280, 720},
                                        std::pair{1280, -1}, std::pair{INT_MAX, INT_MAX}}) {
      VideoFrame frame = whole;
      frame.width = width;
      frame.height = height;
      lookTenTimes(frame);
    }
    for (const int stride : {INT_MAX, INT_MAX / 2, 1279, 0, -1280}) {
      VideoFrame frame = whole;
      frame.planes[0].stride = stride;
      lookTenTimes(frame);
    }
    VideoFrame without = whole;
    without.planes[0].data = nullptr;
    lookTenTimes(without);
    for (const auto& [width, height] :
         {std::pair{1, 1}, std::pair{2, 3}, std::pair{1, 4000}, std::pair{4000, 1}, std::pair{41, 40}}) {
      lookTenTimes(frameOf(greyPicture(width, height), format));
    }
  }
}

}  // namespace

}  // namespace nivlo::test
