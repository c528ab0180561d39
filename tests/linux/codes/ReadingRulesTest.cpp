#include <gmock/gmock.h>

#include "linux/codes/Code39.hpp"
#include "linux/codes/Confirmation.hpp"
#include "linux/codes/Reading.hpp"

namespace nivlo::test {

namespace {

using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

Reading reading(const char* type, const char* text, double x, double y, double size = 40, int scanLines = 0) {
  const double half = size / 2;
  return {type,
          text,
          {{{x - half, y - half}, {x + half, y - half}, {x + half, y + half}, {x - half, y + half}}},
          scanLines};
}

auto Text(const char* text) { return Field(&Reading::text, text); }

steady_clock::time_point at(int seconds) { return steady_clock::time_point(std::chrono::seconds(seconds)); }

TEST(Code39, OnlyARightCheckCharacterAfterDataMakesItMod43) {
  EXPECT_TRUE(endsInMod43Check("ABC-1234-"));
  EXPECT_TRUE(endsInMod43Check("AA"));
  for (const char* plain : {"ABC-1234", "ABC-1234A", "0", "",
                            "a\xff"
                            "0",
                            "abc"})
    EXPECT_FALSE(endsInMod43Check(plain)) << plain;
}

TEST(Confirmation, AWeakReadingMustBeSeenByAnotherLook) {
  for (const char* type : {"org.gs1.EAN-13", "org.gs1.EAN-8", "org.iso.Code39", "org.iso.Code39Mod43"}) {
    Confirmation confirmation;
    const std::vector<Reading> weak = {reading(type, "1", 50, 50, 40, 2)};
    EXPECT_THAT(confirmation.confirmed(weak, {0, at(0)}), IsEmpty());
    EXPECT_THAT(confirmation.confirmed(weak, {0, at(0)}), IsEmpty()) << "the same mistake twice";
    EXPECT_THAT(confirmation.confirmed({reading(type, "2", 50, 50, 40, 2)}, {1, at(0)}), IsEmpty())
        << "another text";
    EXPECT_THAT(confirmation.confirmed(weak, {1, at(0)}), ElementsAre(Text("1"))) << type;
    EXPECT_THAT(confirmation.confirmed(weak, {0, at(0)}), ElementsAre(Text("1")))
        << "once confirmed, it counts";
    for (int look = 0; look < 40; ++look) confirmation.confirmed({}, {0, at(1 + look)});
    EXPECT_THAT(confirmation.confirmed(weak, {1, at(90)}), IsEmpty()) << "an old sighting confirms nothing";
  }
}

TEST(Confirmation, ManyLinesOrErrorCorrectionCountAtOnceAndFewLinesOfUPCENever) {
  Confirmation confirmation;
  for (const Reading& strong :
       {reading("org.iso.QRCode", "q", 50, 50), reading("org.iso.Code128", "c", 50, 50, 40, 2),
        reading("com.intermec.Code93", "n", 50, 50, 40, 2),
        reading("org.gs1.EAN-13", "e", 50, 50, 40, kManyScanLines)})
    EXPECT_EQ(confirmation.confirmed({strong}, {0, at(0)}).size(), 1u) << strong.type;
  for (int look = 0; look < 3; ++look)
    EXPECT_THAT(confirmation.confirmed({reading("org.gs1.UPC-E", "u", 50, 50, 40, 5)}, {0, at(look)}),
                IsEmpty());
}

TEST(Readings, OneCodeReadTwiceStaysOneAndEqualLabelsStayTwo) {
  EXPECT_EQ(withoutDuplicates({reading("t", "x", 50, 50), reading("t", "x", 55, 48)}).size(), 1u);
  EXPECT_EQ(withoutDuplicates({reading("t", "x", 50, 50), reading("t", "x", 150, 50)}).size(), 2u);
  EXPECT_EQ(withoutDuplicates({reading("t", "x", 50, 50), reading("t", "y", 50, 50)}).size(), 2u);
}

TEST(Readings, UPCEInsideAnEAN13IsAMisreadPartOfIt) {
  EXPECT_THAT(withoutDuplicates({reading("org.gs1.UPC-E", "part", 60, 50, 20, 6),
                                 reading("org.gs1.EAN-13", "whole", 50, 50, 40, 6),
                                 reading("org.gs1.UPC-E", "elsewhere", 300, 50, 20, 6)}),
              ElementsAre(Text("whole"), Text("elsewhere")));
}

TEST(Readings, AmongAboutEquallyNearCodesTheLargestComesLast) {
  std::vector<Reading> readings = {reading("t", "large", 620, 350, 90), reading("t", "small", 650, 360, 20),
                                   reading("t", "far but huge", 200, 360, 390)};
  sortPointedAtLast(readings, 1280, 720);
  EXPECT_THAT(readings, ElementsAre(Text("far but huge"), Text("small"), Text("large")));
}

}  // namespace

}  // namespace nivlo::test
