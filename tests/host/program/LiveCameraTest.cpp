// From the camera to the wallpaper, on a real PipeWire daemon with virtual cameras.
#include <gmock/gmock.h>

#include "tests/host/program/Nivlo.hpp"
#include "tests/support/PrivatePipeWire.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/VirtualCamera.hpp"
#include "tests/support/pictures/PictureFile.hpp"

namespace nivlo::test {

namespace {

using testing::Eq;
using testing::HasSubstr;

constexpr Picture::Color kYellow{255, 240, 150};

class LiveCameraTest : public testing::Test {
 protected:
  LiveCameraTest() {
    writeCodePicture(backPicture_, "QRCode", "https://example.org/back", kWhite);
    writeCodePicture(frontPicture_, "QRCode", "https://example.org/front", kYellow);
  }

  VirtualCameraOptions back() const {
    return {"cam-back", {"--location", "back", "--picture", backPicture_.string()}};
  }
  VirtualCameraOptions front() const {
    return {"cam-front", {"--location", "front", "--picture", frontPicture_.string()}};
  }

  TemporaryDirectory directory_;
  std::filesystem::path backPicture_ = directory_.path() / "back.png";
  std::filesystem::path frontPicture_ = directory_.path() / "front.png";
  std::filesystem::path snapshot_ = directory_.path() / "wall.png";
  PrivateBus bus_;
  PrivatePipeWire pipeWire_{bus_};
};

TEST_F(LiveCameraTest, ACodeIsOfferedAndShakingSwitchesToTheFrontCamera) {
  VirtualCamera backCamera(pipeWire_.environment(), back());
  VirtualCamera frontCamera(pipeWire_.environment(), front());
  Nivlo program({"--surface", "offscreen", "--alerts", "terminal", "--size", "640x360", "--snapshot",
                 snapshot_.string(), "--accelerometer",
                 "script:" + directory_.write("script", "6, 0, 1.6, 0\n").string()},
                pipeWire_.environment());
  ASSERT_TRUE(backCamera.waitForStreaming());
  ASSERT_TRUE(program.answer("Get an URL link: https://example.org/back", 0));
  ASSERT_TRUE(program.waitForLine("Cancelled"));
  ASSERT_TRUE(frontCamera.waitForStreaming()) << "after the shake";
  EXPECT_TRUE(backCamera.waitForPaused()) << "only one camera is open";
  EXPECT_TRUE(program.answer("Get an URL link: https://example.org/front", 0))
      << "the picture is mirrored on the screen, but not where codes are read";
  EXPECT_THAT(program.terminate(), Eq(0));
  EXPECT_TRUE(frontCamera.waitForPaused()) << "the camera is released at the end";
  EXPECT_TRUE(isNear(readPicture(snapshot_).at(12, 7), kYellow, 6));
}

TEST_F(LiveCameraTest, TheWallpaperSurvivesARestartOfTheDaemon) {
  auto backCamera = std::make_unique<VirtualCamera>(pipeWire_.environment(), back());
  Nivlo program({"--qr", "off", "--size", "640x360"}, pipeWire_.environment());
  ASSERT_TRUE(backCamera->waitForStreaming());
  pipeWire_.stopDaemon();
  ASSERT_TRUE(program.waitForLine("cam-back: it is gone"));
  pipeWire_.startDaemon();
  backCamera = std::make_unique<VirtualCamera>(pipeWire_.environment(), back());
  EXPECT_TRUE(backCamera->waitForStreaming());
  EXPECT_THAT(program.terminate(), Eq(0));
}

TEST_F(LiveCameraTest, CamerasAreListedWithTheirSides) {
  VirtualCamera backCamera(pipeWire_.environment(), back());
  VirtualCamera frontCamera(pipeWire_.environment(), front());
  Nivlo listing({"devices"}, pipeWire_.environment());
  EXPECT_THAT(listing.waitForExit(), Eq(0));
  EXPECT_THAT(listing.standardOutput(),
              testing::ContainsRegex("back +pipewire:cam-back[^\n]*\nfront +pipewire:cam-front"));
  Nivlo chosen({"devices", "--source", "back=pipewire:cam-front", "--source", "front=none"},
               pipeWire_.environment());
  EXPECT_THAT(chosen.waitForExit(), Eq(0));
  EXPECT_THAT(chosen.standardOutput(), HasSubstr("back         pipewire:cam-front"));
}

TEST(LateCameraTest, TheDemoGivesWayToACameraThatComesLateAndTheLogSaysWhyThereWasNone) {
  PrivateBus bus;
  Nivlo beforeTheDaemon({"--qr", "off"}, bus.environment());
  ASSERT_TRUE(beforeTheDaemon.waitForLine("PipeWire is not running, so the demo scenes stand in"));
  ASSERT_TRUE(beforeTheDaemon.waitForLine("camera demo:back opened"));
  PrivatePipeWire pipeWire(bus);
  {
    VirtualCamera camera(pipeWire.environment(), {"late", {"--location", "back"}});
    EXPECT_TRUE(camera.waitForStreaming());
    EXPECT_TRUE(beforeTheDaemon.waitForLine("PipeWire now has pipewire:late, which takes the place"));
    EXPECT_THAT(beforeTheDaemon.terminate(), Eq(0));
  }
  Nivlo beforeTheCamera({"--qr", "off", "--camera", "front"}, bus.environment());
  ASSERT_TRUE(beforeTheCamera.waitForLine("PipeWire has no camera, so the demo scenes stand in"));
  ASSERT_TRUE(beforeTheCamera.waitForLine("camera demo:front opened"));
  VirtualCamera back(pipeWire.environment(), {"late-back", {"--location", "back"}});
  VirtualCamera front(pipeWire.environment(), {"late-front", {"--location", "front"}});
  EXPECT_TRUE(front.waitForStreaming()) << "the side that was asked for";
  EXPECT_TRUE(beforeTheCamera.waitForLine("camera demo:front closed"));
  Nivlo status({"ctl", "status"}, bus.environment());
  EXPECT_THAT(status.waitForExit(), Eq(0));
  EXPECT_THAT(status.output(), HasSubstr("pipewire:late-front, front"));
  EXPECT_THAT(beforeTheCamera.terminate(), Eq(0));
}

TEST_F(LiveCameraTest, TheStatusSaysWhatDoesNotWorkAndASwapWithoutAnotherCameraIsRefused) {
  auto only = std::make_unique<VirtualCamera>(pipeWire_.environment(), VirtualCameraOptions{"only", {}});
  Nivlo program({"--qr", "on"}, pipeWire_.environment());
  ASSERT_TRUE(only->waitForStreaming());
  const auto ctl = [&](const std::string& command, int status) {
    Nivlo control({"ctl", command}, pipeWire_.environment());
    EXPECT_THAT(control.waitForExit(), Eq(status));
    return control.output();
  };
  EXPECT_THAT(ctl("swap", 1), HasSubstr("nothing has changed: there is no front camera"));
  EXPECT_TRUE(waitFor([&] { return ctl("status", 0).find("scanning   on\n") != std::string::npos; }));
  only.reset();
  EXPECT_TRUE(waitFor([&] { return ctl("status", 0).find("unspecified): unplugged") != std::string::npos; }));
  EXPECT_THAT(ctl("status", 0), HasSubstr("on, but there is no picture"));
  ctl("pause", 0);
  EXPECT_THAT(ctl("status", 0), HasSubstr("on, but not while the wallpaper is not shown"));
  EXPECT_THAT(program.terminate(), Eq(0));
}

}  // namespace

}  // namespace nivlo::test
