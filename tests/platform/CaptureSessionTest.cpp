#include <gtest/gtest.h>

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
  machine.cameras.refused = {"back"};
  session->startRunning();
  EXPECT_TRUE(session->isRunning());
  EXPECT_EQ(session->activeDevice(), nullptr);
}

}  // namespace
}  // namespace nivlo
