#include "tests/bundle/WallpaperTest.hpp"

namespace nivlo {
namespace {

class Cameras : public WallpaperTest {
 protected:
  std::string current() { return view->captureSession()->inputs().at(0)->device()->uniqueID(); }
};

TEST_F(Cameras, IgnoreTheOptionsOrLeaveTheGateAsItWas) {
  view->setWallpaperOptions({{"qr", true}, {"cameraPosition", "front"}});
  EXPECT_TRUE(view->isDetactable());
  EXPECT_EQ(current(), "front");
  for (const NSDictionary& back : {NSDictionary{},
                                   {{"qr", "no"}, {"cameraPosition", "Front"}},
                                   {{"qr", 0.0}, {"cameraPosition", true}}}) {
    view->setWallpaperOptions(back);
    EXPECT_FALSE(view->isDetactable());
    EXPECT_EQ(current(), "back");
    view->setWallpaperOptions({{"qr", 1.0}, {"cameraPosition", "front"}});
    EXPECT_TRUE(view->isDetactable());
    EXPECT_EQ(current(), "front");
  }
}

TEST_F(Cameras, AreNotSwappedOrForgetTheFirst) {
  view->setAnimating(true);
  view->setCameraPosition(AVCaptureDevicePosition::Back);
  EXPECT_EQ(machine.cameras.events, Strings{"open back"}) << "opened a camera that was open already";
  for (const auto* camera : {"front", "back", "front"}) {
    view->setIsShaking(true);
    view->swapFrontAndBackCameras();
    EXPECT_FALSE(view->isShaking());
    EXPECT_EQ(current(), camera);
    EXPECT_EQ(view->videoDevice()->uniqueID(), "back");
    EXPECT_EQ(view->videoInput()->device(), view->videoDevice());
  }
  EXPECT_EQ(machine.cameras.events, (Strings{"open back", "open front", "close back", "open back",
                                             "close front", "open front", "close back"}));
  view->setCameraPosition(AVCaptureDevicePosition::Unspecified);
  EXPECT_EQ(current(), "back");
  view->setCameraPosition(AVCaptureDevicePosition::Unspecified);
  EXPECT_EQ(current(), "front");
}

TEST_F(Cameras, LoseThePictureWhenThereIsNoOther) {
  machine.cameras.infos.pop_back();
  view->swapFrontAndBackCameras();
  EXPECT_EQ(current(), "back");
  view->setAnimating(true);
  view->setWallpaperOptions({{"cameraPosition", "front"}});
  view->setIsShaking(true);
  view->swapFrontAndBackCameras();
  EXPECT_FALSE(view->isShaking());
  machine.cameras.infos.push_back({"front", "Front camera", AVCaptureDevicePosition::Front});
  machine.cameras.refused = {"front"};
  view->swapFrontAndBackCameras();
  EXPECT_EQ(current(), "back");
  EXPECT_EQ(machine.cameras.events, Strings{"open back"});
  EXPECT_TRUE(machine.watchFrames(3));
}

}  // namespace
}  // namespace nivlo
