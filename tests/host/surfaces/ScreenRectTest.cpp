#include <vector>

#include <gmock/gmock.h>

#include "host/surfaces/ScreenRect.hpp"

namespace nivlo::test {

namespace {

using testing::DoubleNear;

TEST(ScreenRectTest, TheUncoveredShareCountsOverlappingRectanglesOnce) {
  const ScreenRect monitor{1000, 0, 400, 200};
  const auto share = [&](const std::vector<ScreenRect>& rects) { return uncoveredShare(monitor, rects); };
  const auto isShare = [](double expected) { return DoubleNear(expected, 1e-9); };
  EXPECT_THAT(share({}), isShare(1));
  EXPECT_THAT(share({{0, 0, 1000, 200}, {1400, 0, 9, 200}, {1000, -50, 400, 50}}), isShare(1)) << "beside it";
  EXPECT_THAT(share({{900, -100, 600, 400}}), isShare(0)) << "larger than the monitor";
  EXPECT_THAT(share({{1200, 0, 200, 100}, {1000, 100, 200, 100}}), isShare(0.5)) << "two quarters";
  EXPECT_THAT(share({{1000, 0, 300, 200}, {1100, 50, 300, 100}, {1100, 50, 10, 10}}), isShare(0.125))
      << "one across another";
  EXPECT_THAT(share({{1000, 0, 198, 200}, {1202, 0, 198, 200}}), isShare(0.01)) << "a gap";
}

}  // namespace

}  // namespace nivlo::test
