#include <gtest/gtest.h>

#include "platform/AVFoundation/CodeSightings.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

DecodedCode code(const char* text, const char* type = "org.iso.QRCode") {
  return {type, text, {{0, 0}, {9, 0}, {9, 9}, {0, 9}}};
}

TEST(CodeSightings, ReportACodeTwiceOrNeverAgain) {
  CodeSightings sightings;
  CodeSightings::Time now{1h};
  const auto look = [&](std::chrono::milliseconds after, std::vector<DecodedCode> seen) {
    Texts texts;
    for (const auto& coming : sightings.comingIntoView(std::move(seen), now += after)) {
      texts.push_back(coming.text);
    }
    return texts;
  };
  EXPECT_EQ(look(0ms, {code("b"), code("a"), code("b")}), (Texts{"b", "a"})) << "the order changed";
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(look(100ms, i % 9 == 8 ? std::vector{code("a"), code("b")} : std::vector<DecodedCode>{}),
              Texts{})
        << i;
  }
  EXPECT_EQ(look(100ms, {code("a", "org.gs1.EAN-13")}), Texts{"a"}) << "two types were taken for one code";
  EXPECT_EQ(look(1min, {code("a")}), Texts{}) << "a code left while nobody watched";
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(look(100ms, {}), Texts{});
  }
  EXPECT_EQ(look(100ms, {code("a")}), Texts{"a"});
}

}  // namespace
}  // namespace nivlo
