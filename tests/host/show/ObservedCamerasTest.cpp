// The host's knowledge of the cameras that a session opens and closes.
#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "host/show/CameraActivity.hpp"
#include "host/show/ObservedCameras.hpp"
#include "tests/fakes/FakeCameras.hpp"
#include "tests/support/LoopUntil.hpp"

namespace nivlo::test {

namespace {

using testing::ElementsAre;

class ObservedCamerasTest : public testing::Test {
 protected:
  void record(CameraEvent event, const ObservedCamera& camera) {
    constexpr std::array kNames{"opened", "refused", "started", "silent", "resumed", "closed"};
    events_.push_back(camera.info.uniqueID + ' ' + kNames.at(static_cast<std::size_t>(event)));
    activity_.follow(event, camera);
  }
  std::string openCamera() const { return activity_.open() ? activity_.open()->info.uniqueID : "none"; }

  std::vector<std::string> events_;
  CameraActivity activity_;
  FakeCameras* fakes_ = nullptr;
  std::unique_ptr<CameraDriver> cameras_ = [this] {
    auto fakes = std::make_unique<FakeCameras>();
    fakes_ = fakes.get();
    return observed(std::move(fakes), [this](auto event, const auto& camera) { record(event, camera); });
  }();
};

TEST_F(ObservedCamerasTest, TheLaterOfTwoOpenCamerasCountsWhicheverClosesFirst) {
  auto back = cameras_->open("back", [](const VideoFramePtr&) {});
  EXPECT_EQ(openCamera(), "back");
  auto front = cameras_->open("front", [](const VideoFramePtr&) {});
  EXPECT_EQ(openCamera(), "front");
  back.reset();
  EXPECT_EQ(openCamera(), "front") << "a session switches cameras in this order";
  back = cameras_->open("back", [](const VideoFramePtr&) {});
  back.reset();
  EXPECT_EQ(openCamera(), "front") << "a switch that was given up";
  front.reset();
  EXPECT_EQ(openCamera(), "none");
  EXPECT_EQ(activity_.lastPosition(), AVCaptureDevicePosition::Back);
  EXPECT_EQ(activity_.openings(), 3U);
}

TEST_F(ObservedCamerasTest, ARefusedCameraIsReportedAndNotCountedAsOpen) {
  fakes_->refused = {"front"};
  EXPECT_EQ(cameras_->open("front", [](const VideoFramePtr&) {}), nullptr);
  EXPECT_THAT(events_, ElementsAre("front refused"));
  EXPECT_EQ(openCamera(), "none");
  EXPECT_EQ(activity_.openings(), 0U);
}

TEST_F(ObservedCamerasTest, ASilentCameraIsReportedAndALiveOneIsNot) {
  fakes_->silent = {"back"};
  auto back = cameras_->open("back", [](const VideoFramePtr&) {});
  const auto front = cameras_->open("front", [](const VideoFramePtr&) {});
  EXPECT_TRUE(loopUntil([this] { return activity_.open()->pulse->isAlive(); }))
      << "the front camera, opened last";
  EXPECT_TRUE(loopUntil([this] { return events_.size() == 3; }));
  back.reset();
  EXPECT_THAT(events_, ElementsAre("back opened", "front opened", "back silent", "back closed"));
}

}  // namespace

}  // namespace nivlo::test
