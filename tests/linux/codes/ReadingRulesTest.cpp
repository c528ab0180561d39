#include <chrono>
#include <optional>
#include <vector>

#include <gmock/gmock.h>

#include "linux/codes/Confirmation.hpp"
#include "linux/codes/decoders/Code39.hpp"
#include "linux/codes/decoders/Reading.hpp"

namespace nivlo::test {

namespace {

using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

Reading reading(const char* type, const char* text, double x, double y, double size = 40) {
  const double half = size / 2;
  return {
      type, text, {{{x - half, y - half}, {x + half, y - half}, {x + half, y + half}, {x - half, y + half}}}};
}

auto Text(const char* text) { return Field(&Reading::text, text); }

steady_clock::time_point at(int seconds) { return steady_clock::time_point(std::chrono::seconds(seconds)); }

TEST(Code39, OnlyACorrectCheckCharacterAfterDataMakesItMod43) {
  EXPECT_TRUE(endsInMod43Check("ABC-1234-"));
  EXPECT_TRUE(endsInMod43Check("AA"));
  for (const char* plain : {"ABC-1234", "ABC-1234A", "0", "",
                            "a\xff"
                            "0",
                            "abc"}) {
    EXPECT_FALSE(endsInMod43Check(plain)) << plain;
  }
}

TEST(Code39, FullASCIIIsReadOnlyWhereEverySignStartsAPair) {
  EXPECT_EQ(fullASCII("E+X+T+E+N+D+E+D /A%J/J/C"), "Extended !?*#");
  EXPECT_EQ(fullASCII("+A99912345/$$3C001"), std::nullopt)
      << "a health industry label, whose data starts with a plus sign";
  for (const char* plain : {"B3% $DAD$", "2/4-8/16-32", "PLAIN", "A/Q"}) {
    EXPECT_EQ(fullASCII(plain), std::nullopt);
  }
}

TEST(Confirmation, AWeakReadingNeedsTwoStrategiesOrThreeFramesAndNoRivalUnlessItIsCertain) {
  const int first = 0;
  const int second = 0;
  const int third = 0;
  for (const char* type :
       {"org.gs1.UPC-E", "org.gs1.EAN-13", "org.gs1.EAN-8", "org.iso.Code39", "org.iso.Code39Mod43"}) {
    Confirmation confirmation;
    const std::vector<Reading> right = {reading(type, "1", 50, 50)};
    const std::vector<Reading> wrong = {reading(type, "2", 50, 50)};
    EXPECT_THAT(confirmation.confirmed(right, {&first, at(0)}), IsEmpty());
    EXPECT_THAT(confirmation.confirmed(right, {&first, at(1)}), IsEmpty()) << "may be the same mistake twice";
    EXPECT_THAT(confirmation.confirmed(wrong, {&second, at(1)}), IsEmpty());
    EXPECT_THAT(confirmation.confirmed(wrong, {&second, at(2)}), IsEmpty());
    EXPECT_THAT(confirmation.confirmed(wrong, {&second, at(3)}), IsEmpty()) << "another reading disputes it";
    EXPECT_THAT(confirmation.confirmed(right, {&third, at(3)}), ElementsAre(Text("1"))) << type;
    for (int pass = 0; pass < 100; ++pass) {
      confirmation.confirmed({}, {&first, at(4 + pass)});
    }
    EXPECT_THAT(confirmation.confirmed(right, {&second, at(200)}), IsEmpty())
        << "an old sighting confirms nothing";
    EXPECT_THAT(confirmation.confirmed(right, {&second, at(201)}), IsEmpty());
    EXPECT_THAT(confirmation.confirmed(right, {&second, at(202)}), ElementsAre(Text("1"))) << "three frames";
  }
  Confirmation confirmation;
  Reading certain = reading("org.gs1.UPC-E", "1", 50, 50);
  certain.isCertain = true;
  EXPECT_THAT(confirmation.confirmed({certain}, {&first, at(0)}), ElementsAre(Text("1")));
  for (const int* strategy : {&second, &third}) {
    EXPECT_THAT(confirmation.confirmed({reading("org.gs1.UPC-E", "2", 50, 50)}, {strategy, at(1)}),
                IsEmpty());
  }
  for (const char* strong : {"org.iso.QRCode", "org.iso.Code128", "com.intermec.Code93"}) {
    EXPECT_EQ(confirmation.confirmed({reading(strong, "q", 50, 50)}, {&first, at(0)}).size(), 1u) << strong;
  }
}

TEST(Readings, OneCodeReadTwiceStaysOneAndEqualLabelsStayTwo) {
  EXPECT_EQ(withoutDuplicates({reading("t", "x", 50, 50), reading("t", "x", 55, 48)}).size(), 1u);
  EXPECT_EQ(withoutDuplicates({reading("t", "x", 50, 50), reading("t", "x", 150, 50)}).size(), 2u);
  EXPECT_EQ(withoutDuplicates({reading("t", "x", 50, 50), reading("t", "y", 50, 50)}).size(), 2u);
}

TEST(Readings, UPCEWithinAnEAN13IsDroppedAsAMisreadPartOfIt) {
  EXPECT_THAT(withoutDuplicates({reading("org.gs1.UPC-E", "part", 60, 50, 20),
                                 reading("org.gs1.EAN-13", "whole", 50, 50, 40),
                                 reading("org.gs1.UPC-E", "elsewhere", 300, 50, 20)}),
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
