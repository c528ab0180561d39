#include <gtest/gtest.h>

#include "platform/AVFoundation/AVCaptureVideoPreviewLayer.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo {
namespace {

class Session : public testing::Test {
 protected:
  std::shared_ptr<AVCaptureDeviceInput> input(std::size_t index) {
    const auto devices = AVCaptureDevice::devicesWithMediaType(AVMediaTypeVideo);
    return AVCaptureDeviceInput::initWithDevice(devices.at(index));
  }
  FakeMachine machine;
  std::shared_ptr<AVCaptureSession> session = AVCaptureSession::init();
  std::shared_ptr<AVCaptureDeviceInput> back = input(0), front = input(1);
};

TEST_F(Session, StartsWithinABoundThoughNoPictureComes) {
  machine.cameras.silent = {"back"};
  session->addInput(back);
  const auto start = std::chrono::steady_clock::now();
  session->startRunning();
  EXPECT_TRUE(session->isRunning());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  session->stopRunning();
  machine.cameras.refused = {"back"};
  session->startRunning();
  EXPECT_TRUE(session->isRunning());
  EXPECT_EQ(session->activeDevice(), nullptr);
}

TEST_F(Session, ShowsFramesOnlyWhileItRunsAndToThoseWhoLive) {
  session->addInput(front);
  auto layer = AVCaptureVideoPreviewLayer::initWithSession(session);
  auto gone = AVCaptureVideoPreviewLayer::initWithSession(session);
  std::atomic<int> shown{0}, shownToTheGone{0};
  layer->setFrameHandler([&] { ++shown; });
  gone->setFrameHandler([&] { ++shownToTheGone; });
  EXPECT_FALSE(layer->newestFrame().picture);
  session->startRunning();
  EXPECT_GT(shown, 0) << "the start waits for the first frame";
  EXPECT_TRUE(layer->newestFrame().geometry.mirrored) << "the front camera is shown as a mirror";
  gone.reset();
  ASSERT_TRUE(machine.watchFrames(2));
  const int atItsEnd = shownToTheGone;
  ASSERT_TRUE(machine.watchFrames(3));
  EXPECT_EQ(shownToTheGone, atItsEnd);
  session->stopRunning();
  EXPECT_EQ(machine.cameras.events.back(), "close front");
  EXPECT_TRUE(layer->newestFrame().picture) << "the last picture stays";
}

TEST_F(Session, EndsOnTheMainThreadThoughAFrameHoldsItsLastReference) {
  session->addInput(back);
  auto layer = AVCaptureVideoPreviewLayer::initWithSession(session);
  std::atomic<int> shown{0};
  std::atomic<bool> release{false};
  layer->setFrameHandler([&] {
    // The first frame passes, for the start waits for it.
    if (++shown > 1) {
      release.wait(false);
    }
  });
  session->startRunning();
  ASSERT_TRUE(machine.mainQueue.waitUntil([&] { return shown > 1; }));
  session.reset();
  layer.reset();
  release = true;
  release.notify_one();
  EXPECT_TRUE(machine.mainQueue.drainUntil([&] { return machine.cameras.events.size() == 2; }));
}

TEST(CaptureDevice, DefaultLooksBackWhereOneDoes) {
  FakeMachine machine;
  const auto defaultDevice = [] { return AVCaptureDevice::defaultDeviceWithMediaType(AVMediaTypeVideo); };
  std::swap(machine.cameras.infos[0], machine.cameras.infos[1]);
  EXPECT_EQ(defaultDevice()->uniqueID(), "back");
  machine.cameras.infos.pop_back();
  EXPECT_EQ(defaultDevice()->uniqueID(), "front");
  machine.cameras.infos.clear();
  EXPECT_FALSE(defaultDevice());
  EXPECT_FALSE(AVCaptureDevice::defaultDeviceWithMediaType("soun"));
}

}  // namespace
}  // namespace nivlo
