#include <limits>

#include "tests/bundle/WallpaperTest.hpp"

namespace nivlo {
namespace {

class Shake : public WallpaperTest {
 protected:
  void SetUp() override { view->setAnimating(true); }
  /// Waits until the accelerometer's queue has handled all that was sent.
  void settle() {
    std::atomic<bool> done{false};
    view->queue()->addOperation([&] { done = true; });
    ASSERT_TRUE(test::waitFor([&] { return done.load(); }));
  }
  int swaps() {
    settle();
    const auto before = machine.cameras.events.size();
    machine.mainQueue.drain();
    return static_cast<int>(machine.cameras.events.size() - before) / 2;
  }
};

TEST_F(Shake, HasAWrongThreshold) {
  EXPECT_DOUBLE_EQ(machine.accelerometer.interval, 0.1);
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  struct {
    double x, y, z;
    int swaps;
  } cases[] = {{1.5, 1.5, 1.5, 0}, {1.5000001, 0, 0, 1}, {0, 1.6, -9, 1}, {0, 0, 2, 1},
               {-4, -4, -4, 0},    {nan, nan, nan, 0},   {nan, 0, 2, 1}};
  for (const auto& sample : cases) {
    machine.accelerometer.send(sample.x, sample.y, sample.z);
    EXPECT_EQ(swaps(), sample.swaps) << sample.x << " " << sample.y << " " << sample.z;
  }
}

TEST_F(Shake, MissesAReactionOrLosesItWhenTheGateCloses) {
  for (int i = 0; i < 3; ++i) {
    machine.accelerometer.send(2, 0, 0);
  }
  settle();
  view->setIsShakeDetectable(false);
  EXPECT_EQ(machine.mainQueue.pending(), 3u);
  EXPECT_EQ(swaps(), 3);
  EXPECT_EQ(machine.cameras.events.back(), "close back");
  view->setIsShakeDetectable(true);
  machine.accelerometer.send(2, 0, 0);
  settle();
  view->setIsShaking(true);
  EXPECT_EQ(swaps(), 0) << "a second effect began during the first";
  EXPECT_TRUE(view->isShaking());
}

TEST_F(Shake, SubscribesTwiceOrGoesOnAfterAnError) {
  view->setIsShaking(true);
  view->AddShakeToActive();
  EXPECT_FALSE(view->isShaking() || view->isShakeDetectable());
  machine.accelerometer.send({{}, "unplugged"});
  settle();
  EXPECT_FALSE(machine.accelerometer.isListenedTo());
  view->AddShakeToActive();
  EXPECT_EQ(machine.accelerometer.starts, 1);
}

}  // namespace
}  // namespace nivlo
