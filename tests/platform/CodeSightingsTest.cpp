#include <gtest/gtest.h>

#include "platform/AVFoundation/CodeSightings.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;

DecodedCode code(const char* text, const char* type = "org.iso.QRCode") {
  return {type, text, {{0, 0}, {9, 0}, {9, 9}, {0, 9}}};
}

class Sightings : public testing::Test {
 protected:
  /// The text of the code that is reported after a look with this camera; "" for none.
  std::string look(std::chrono::milliseconds after, std::vector<DecodedCode> seen,
                   const char* camera = "back") {
    const auto coming = sightings.nextNew(camera, std::move(seen), now += after);
    return coming ? coming->text : "";
  }

  CodeSightings sightings;
  CodeSightings::Time now{1h};
};

TEST_F(Sightings, ReportACodeTwiceOrNeverAgain) {
  EXPECT_EQ(look(0ms, {code("b"), code("a"), code("b")}), "b");
  EXPECT_EQ(look(0ms, {code("b"), code("a"), code("b")}), "a")
      << "an unreported code was taken for a known one";
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(look(100ms, i % 9 == 8 ? std::vector{code("a"), code("b")} : std::vector<DecodedCode>{}), "")
        << i;
  }
  EXPECT_EQ(look(100ms, {code("a", "org.gs1.EAN-13")}), "a") << "two types were taken for one code";
  EXPECT_EQ(look(1min, {code("a")}), "") << "a code left while nobody watched";
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(look(100ms, {}), "");
  }
  EXPECT_EQ(look(100ms, {code("a")}), "a");
  sightings.forget(code("a"));
  EXPECT_EQ(look(100ms, {code("a")}), "a");
}

TEST_F(Sightings, TakeAnotherCamerasViewForTheirOwn) {
  EXPECT_EQ(look(0ms, {code("poster")}), "poster");
  EXPECT_EQ(look(100ms, {code("poster")}, "front"), "") << "the code moved to the other camera at once";
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(look(100ms, {}, "front"), "");
  }
  EXPECT_EQ(look(100ms, {code("poster")}), "") << "it stayed before the first camera";
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(look(100ms, {}), "");
  }
  EXPECT_EQ(look(100ms, {code("poster")}, "front"), "poster") << "both cameras have seen it leave";
}

}  // namespace
}  // namespace nivlo
