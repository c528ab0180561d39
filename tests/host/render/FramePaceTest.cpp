// The frames of a camera that are passed on.
#include <chrono>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "host/render/FramePace.hpp"

namespace nivlo::test {

namespace {

using namespace std::chrono_literals;

/// The number of the frames that come in ten seconds and need not wait. Each is late by up to `jitter`.
int passedIn10Seconds(int cameraRate, int limit, std::chrono::milliseconds jitter) {
  const auto interval = FramePace(limit).interval();
  const Spacing::Clock::time_point start(1h);
  Spacing spacing;
  int passed = 0;
  for (int frame = 0; frame < 10 * cameraRate; ++frame) {
    const auto now = start + frame * (1s / 1.0) / cameraRate + jitter * (frame % 3) / 2.0;
    const auto at = std::chrono::time_point_cast<Spacing::Clock::duration>(now);
    if (spacing.wait(at, interval) == 0ns) {
      spacing.happened(at, interval);
      ++passed;
    }
  }
  return passed;
}

TEST(FramePace, NeitherPassesMoreThanAllowedNorLosesFramesToJitter) {
  EXPECT_NEAR(passedIn10Seconds(30, 10, 4ms), 100, 2);
  EXPECT_NEAR(passedIn10Seconds(30, 20, 4ms), 200, 2);
  EXPECT_NEAR(passedIn10Seconds(30, 30, 4ms), 300, 2) << "a camera at exactly the limit";
  EXPECT_NEAR(passedIn10Seconds(30, 60, 4ms), 300, 0);
  EXPECT_NEAR(passedIn10Seconds(60, 1, 4ms), 10, 0);
}

TEST(FramePace, HalvesDrawingWithAndWithoutALimit) {
  FramePace free;
  EXPECT_EQ(free.drawingInterval(), 0ns);
  free.setHalved(true);
  EXPECT_NEAR(std::chrono::duration<double>(free.drawingInterval()).count(), 1.0 / 30, 1e-6);
  FramePace limited(10);
  limited.setHalved(true);
  EXPECT_EQ(limited.drawingInterval(), 200ms);
  limited.setHalved(false);
  EXPECT_EQ(limited.drawingInterval(), 100ms);
}

}  // namespace

}  // namespace nivlo::test
