#include <cmath>

#include "tests/bundle/WallpaperTest.hpp"

namespace nivlo {
namespace {

class Lifecycle : public WallpaperTest {};

TEST_F(Lifecycle, BeginsAnimatedOrWithAMisplacedPreview) {
  EXPECT_TRUE(view->isDetactable());
  EXPECT_FALSE(view->isShakeDetectable() || view->isShaking() || view->running());
  EXPECT_TRUE(view->foundBarcodes().empty());
  EXPECT_EQ(view->allowedBarcodeTypes(),
            (Strings{"org.iso.QRCode", "org.iso.PDF417", "org.gs1.UPC-E", "org.iso.Aztec", "org.iso.Code39",
                     "org.iso.Code39Mod43", "org.gs1.EAN-13", "org.gs1.EAN-8", "com.intermec.Code93",
                     "org.iso.Code128"}));
  EXPECT_EQ(view->previewView()->frame(), (CGRect{{10, 20}, {300, 200}}));
  EXPECT_EQ(view->previewLayer()->frame(), (CGRect{{0, 0}, {300, 200}}));
  EXPECT_EQ(view->previewLayer()->superlayer(), view->previewView()->layer());
  EXPECT_EQ(view->view(), view);
  EXPECT_FALSE(NivloWallpaper::initWithFrame({{0, 0}, {-1, 5}}));
  EXPECT_FALSE(NivloWallpaper::initWithFrame({{NAN, 0}, {5, 5}}));
}

TEST_F(Lifecycle, OpensTheCameraTwiceOrScansForNothing) {
  Strings typesAtOpen{"never opened"};
  machine.cameras.onOpen = [&] { typesAtOpen = view->metadataOutput()->metadataObjectTypes(); };
  view->setAnimating(true);
  view->setAnimating(true);
  EXPECT_EQ(typesAtOpen, Strings{});
  EXPECT_EQ(view->metadataOutput()->metadataObjectTypes(), machine.reader.types);
  EXPECT_TRUE(view->running() && view->isShakeDetectable());
  EXPECT_EQ(machine.cameras.events, Strings{"open back"});
  view->metadataOutput()->setMetadataObjectTypes({});
  post(UIApplicationDidEnterBackgroundNotification);
  post(UIApplicationDidEnterBackgroundNotification);
  EXPECT_FALSE(view->running());
  post(UIApplicationWillEnterForegroundNotification);
  EXPECT_EQ(view->metadataOutput()->metadataObjectTypes(), machine.reader.types);
  view->setAnimating(false);
  view->setAnimating(false);
  EXPECT_EQ(machine.cameras.events, (Strings{"open back", "close back", "open back", "close back"}));
}

TEST_F(Lifecycle, StopsASessionThatItDidNotStart) {
  view->captureSession()->startRunning();
  view->setAnimating(false);
  post(UIApplicationDidEnterBackgroundNotification);
  EXPECT_TRUE(view->captureSession()->isRunning());
  post(UIApplicationWillEnterForegroundNotification);
  EXPECT_TRUE(view->running());
  EXPECT_FALSE(view->isShakeDetectable()) << "the foreground opened the shake gate";
}

TEST_F(Lifecycle, FailsWithoutACameraOrMissesALaterOne) {
  machine.cameras.infos.clear();
  view = NivloWallpaper::initWithFrame({{0, 0}, {30, 20}});
  EXPECT_EQ(machine.log.lines(), Strings{"No video camera on this device!"});
  EXPECT_FALSE(view->captureSession() || view->videoDevice() || view->videoInput() || view->previewLayer() ||
               view->metadataOutput());
  view->setAnimating(true);
  EXPECT_TRUE(view->running());
  view->setWallpaperOptions({{"cameraPosition", "front"}});
  view->swapFrontAndBackCameras();
  view->setAnimating(false);
  view->setupCaptureSession();
  EXPECT_EQ(machine.log.lines().size(), 2u);
  machine.cameras.infos = {{"late", "Late camera"}};
  view->setupCaptureSession();
  view->setupCaptureSession();
  EXPECT_EQ(view->videoDevice()->uniqueID(), "late");
  EXPECT_EQ(machine.log.lines().size(), 2u);
}

TEST_F(Lifecycle, LeavesSomethingRunningBehind) {
  view->setAnimating(true);
  const std::weak_ptr<AVCaptureSession> session = view->captureSession();
  view.reset();
  EXPECT_TRUE(machine.mainQueue.drainUntil([&] { return session.expired(); }));
  EXPECT_EQ(machine.cameras.events, (Strings{"open back", "close back"}));
  EXPECT_FALSE(machine.accelerometer.isListenedTo());
  post(UIApplicationWillEnterForegroundNotification);
  post(UIApplicationDidEnterBackgroundNotification);
  EXPECT_EQ(machine.cameras.events.size(), 2u);
}

TEST_F(Lifecycle, EndsOnAnotherThreadThanTheMainOne) {
  view->setAnimating(true);
  std::jthread([last = std::move(view)] {}).join();
  EXPECT_EQ(machine.cameras.events, Strings{"open back"});
  machine.mainQueue.drainUntil([&] { return machine.cameras.events.size() == 2; });
  EXPECT_EQ(machine.cameras.events.back(), "close back");
}

}  // namespace
}  // namespace nivlo
