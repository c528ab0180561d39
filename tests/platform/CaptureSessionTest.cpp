#include <gmock/gmock.h>

#include "platform/AVFoundation/AVCaptureSession.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo {
namespace {

TEST(CaptureSession, HangsWithoutAPicture) {
  FakeMachine machine;
  machine.cameras.silent = {"back"};
  const auto session = AVCaptureSession::init();
  session->addInput(
      AVCaptureDeviceInput::initWithDevice(AVCaptureDevice::defaultDeviceWithMediaType(AVMediaTypeVideo)));
  const auto start = std::chrono::steady_clock::now();
  session->startRunning();
  EXPECT_TRUE(session->isRunning());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  session->stopRunning();
  const auto resumed = std::chrono::steady_clock::now();
  session->startRunning();
  EXPECT_LT(std::chrono::steady_clock::now() - resumed, std::chrono::seconds(1)) << "waited again";
  session->stopRunning();
  machine.cameras.refused = {"back"};
  session->startRunning();
  EXPECT_TRUE(session->isRunning());
  EXPECT_EQ(session->activeDevice(), nullptr);
}

TEST(CaptureSession, ASwapWhileStoppedToACameraThatIsRefusedLosesTheOther) {
  FakeMachine machine;
  const auto devices = AVCaptureDevice::devicesWithMediaType(AVMediaTypeVideo);
  const auto back = AVCaptureDeviceInput::initWithDevice(devices.at(0));
  const auto front = AVCaptureDeviceInput::initWithDevice(devices.at(1));
  const auto session = AVCaptureSession::init();
  session->addInput(back);
  session->beginConfiguration();
  session->removeInput(back);
  session->addInput(front);
  session->commitConfiguration();
  machine.cameras.refused = {"front"};
  session->startRunning();
  EXPECT_EQ(session->activeDevice(), devices.at(0));
  EXPECT_THAT(session->inputs(), testing::ElementsAre(back));
  session->stopRunning();

  session->removeInput(back);
  session->startRunning();
  EXPECT_EQ(session->activeDevice(), nullptr) << "an input that was removed for good came back";
}

}  // namespace
}  // namespace nivlo
