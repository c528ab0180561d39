// The pictures that make a surface draw.
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

#include "host/surfaces/FrameClock.hpp"
#include "platform/AVFoundation/AVCaptureVideoPreviewLayer.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo::test {

namespace {

VideoFramePtr anyPicture() { return std::make_shared<VideoFrame>(); }

class FrameClockTest : public testing::Test {
 protected:
  /// The number of times that the clock has ticked since the last call.
  int ticks() {
    machine.mainQueue.drain();
    return std::exchange(ticks_, 0);
  }

  FakeMachine machine;
  std::shared_ptr<UIView> view = UIView::initWithFrame({{0, 0}, {64, 48}});
  int ticks_ = 0;
  std::optional<FrameClock> clock{std::in_place, LaidOutView{view, {64, 48}}, [this] { ++ticks_; }};
};

TEST_F(FrameClockTest, PicturesOfAnyLayerTickOnTheMainThreadOnceForAllThatCameSince) {
  const auto camera = AVCaptureVideoPreviewLayer::initWithSession(nullptr);
  view->layer()->addSublayer(camera);
  camera->consume({anyPicture(), {}});
  EXPECT_EQ(ticks(), 1);

  std::thread([this] {
    for (int i = 0; i < 100; ++i) {
      view->layer()->setContents(anyPicture());
    }
  }).join();
  EXPECT_EQ(ticks_, 0) << "the clock ticked on the wallpaper's own thread";
  EXPECT_EQ(ticks(), 1);

  view->layer()->setContents(nullptr);
  EXPECT_EQ(ticks(), 1) << "the emptied layer would stay on the screen";
}

TEST_F(FrameClockTest, LayersAddedLaterTickWithAllTheirSublayersUntilTheyAreRemoved) {
  const auto later = UIView::initWithFrame({{0, 0}, {64, 48}});
  const auto inner = std::make_shared<CALayer>();
  later->layer()->addSublayer(inner);
  view->addSubview(later);
  inner->setContents(anyPicture());
  EXPECT_EQ(ticks(), 1);

  later->removeFromSuperview();
  inner->setContents(anyPicture());
  EXPECT_EQ(ticks(), 0);
}

TEST_F(FrameClockTest, PicturesThatWereThereFirstTickOnce) {
  const auto inner = std::make_shared<CALayer>();
  view->layer()->addSublayer(inner);
  view->layer()->setContents(anyPicture());
  inner->setContents(anyPicture());
  ticks();
  clock.emplace(LaidOutView{view, {64, 48}}, [this] { ++ticks_; });
  EXPECT_EQ(ticks_, 0) << "the clock ticked before its owner was ready";
  EXPECT_EQ(ticks(), 1) << "a wallpaper that sets one picture for good would never be shown";
}

TEST_F(FrameClockTest, AClockThatIsGoneDoesNotTickForPicturesOnTheirWay) {
  view->layer()->setContents(anyPicture());
  clock.reset();
  view->layer()->setContents(anyPicture());
  EXPECT_EQ(ticks(), 0);
}

}  // namespace

}  // namespace nivlo::test
