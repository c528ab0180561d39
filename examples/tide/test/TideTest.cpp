#include "Sea.hpp"
#include "Tide.hpp"

#include <chrono>
#include <numeric>
#include <thread>

#include <gtest/gtest.h>

namespace tide {
namespace {

using namespace std::chrono_literals;

const nivlo::CGSize kScreen{1920, 1080};

/// Mean of all colour bytes in some rows, given as parts of the height.
double brightness(const nivlo::VideoFrame& frame, double from = 0, double to = 1) {
  long sum = 0;
  long count = 0;
  for (int y = static_cast<int>(from * frame.height); y < static_cast<int>(to * frame.height); ++y) {
    const auto* row = frame.planes[0].data + static_cast<std::ptrdiff_t>(y) * frame.planes[0].stride;
    sum = std::accumulate(row, row + frame.width * 4, sum);
    count += frame.width * 3;
  }
  return static_cast<double>(sum) / static_cast<double>(count);
}

bool sameRows(const nivlo::VideoFrame& a, const nivlo::VideoFrame& b, int from, int to) {
  const auto offset = static_cast<std::ptrdiff_t>(from) * a.planes[0].stride;
  const auto length = static_cast<std::ptrdiff_t>(to - from) * a.planes[0].stride;
  return std::equal(a.planes[0].data + offset, a.planes[0].data + offset + length, b.planes[0].data + offset);
}

nivlo::VideoFramePtr newest(const Tide& tide) { return tide.layer()->contents(); }

TEST(Sea, HasTheScreensShapeAndTheLightOfTheHour) {
  Sea sea(kScreen);
  const auto noon = sea.draw({.hour = 13});
  EXPECT_NEAR(static_cast<double>(noon->width) / noon->height, 16.0 / 9, 0.02);
  EXPECT_LE(noon->width * noon->height, Sea::kMostPixels);
  EXPECT_GT(brightness(*noon), 3 * brightness(*sea.draw({.hour = 1})));
  EXPECT_LT(brightness(*sea.draw({.hour = 13, .isDim = true})), 0.75 * brightness(*noon));
  EXPECT_TRUE(sameRows(*noon, *sea.draw({.hour = 37}), 0, noon->height))
      << "a day later the light is the same";
  for (const double hour : {-1.0, 24.0, 23.999, 1e9}) {
    EXPECT_GT(brightness(*sea.draw({.hour = hour})), 0) << hour;
  }
}

TEST(Sea, MovesItsWavesUnderASkyThatStands) {
  Sea sea(kScreen);
  const auto before = sea.draw({.hour = 9, .seconds = 0});
  const auto after = sea.draw({.hour = 9, .seconds = 1});
  const int horizon = before->height * 46 / 100;
  EXPECT_TRUE(sameRows(*before, *after, 0, horizon));
  EXPECT_FALSE(sameRows(*before, *after, horizon, before->height));
}

TEST(Sea, FitsScreensOfAnyShape) {
  for (const nivlo::CGSize size : {nivlo::CGSize{360, 720}, {1, 1}, {0, 0}, {8000, 10}}) {
    const auto frame = Sea(size).draw({});
    EXPECT_GE(frame->width, 2);
    EXPECT_GE(frame->height, 2);
  }
}

TEST(Tide, DrawsOnlyWhileItIsAnimated) {
  const auto tide = Tide::initWithFrame({{0, 0}, kScreen});
  ASSERT_TRUE(tide);
  std::this_thread::sleep_for(2 * Painter::kInterval);
  EXPECT_FALSE(newest(*tide)) << "nothing was switched on yet";
  tide->setAnimating(true);
  for (int i = 0; i < 100 && !newest(*tide); ++i) {
    std::this_thread::sleep_for(20ms);
  }
  ASSERT_TRUE(newest(*tide));
  tide->setAnimating(false);
  std::this_thread::sleep_for(2 * Painter::kInterval);  // a picture may be on its way
  const auto last = newest(*tide);
  std::this_thread::sleep_for(3 * Painter::kInterval);
  EXPECT_EQ(newest(*tide), last);
}

TEST(Tide, ItsPresetsAreThreeHoursInWords) {
  const auto presets = Tide::presetWallpaperOptions();
  ASSERT_EQ(presets.size(), 3U);
  EXPECT_EQ(Tide::descriptionForOptions(presets[0]), "the sea at this hour");
  EXPECT_EQ(Tide::descriptionForOptions(presets[1]), "the sea at sunrise");
  EXPECT_EQ(Tide::descriptionForOptions(presets[2]), "the sea by moonlight");
  EXPECT_EQ(Tide::descriptionForOptions({}), "the sea at this hour");
}

TEST(Tide, RefusesWhatIsNoRectangle) { EXPECT_FALSE(Tide::initWithFrame({{0, 0}, {-1, 5}})); }

}  // namespace
}  // namespace tide
