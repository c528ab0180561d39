#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

void NivloWallpaper::setupCaptureSession() {
  if (captureSession_) {
    return;
  }
  videoDevice_ = AVCaptureDevice::defaultDeviceWithMediaType(AVMediaTypeVideo);
  if (!videoDevice_) {
    NSLog("No video camera on this device!");
    return;
  }
  captureSession_ = AVCaptureSession::init();
  videoInput_ = AVCaptureDeviceInput::initWithDevice(videoDevice_);
  if (captureSession_->canAddInput(videoInput_)) {
    captureSession_->addInput(videoInput_);
  }
  previewLayer_ = AVCaptureVideoPreviewLayer::initWithSession(captureSession_);
  previewLayer_->setVideoGravity(AVLayerVideoGravity::ResizeAspectFill);
  metadataOutput_ = AVCaptureMetadataOutput::init();
  metadataOutput_->setMetadataObjectsDelegate(shared(),
                                              dispatch_queue_create("com.qel.featurebuild.metadata"));
  if (captureSession_->canAddOutput(metadataOutput_)) {
    captureSession_->addOutput(metadataOutput_);
  }
}

std::shared_ptr<AVCaptureDevice> NivloWallpaper::cameraWithPosition(AVCaptureDevicePosition position) const {
  for (auto& device : AVCaptureDevice::devicesWithMediaType(AVMediaTypeVideo)) {
    if (device->position() == position) {
      return device;
    }
  }
  return nullptr;
}

void NivloWallpaper::swapFrontAndBackCameras() {
  if (const auto input = firstVideoInput()) {
    replaceWithOtherCamera(input);
  }
  setIsShaking(false);
}

void NivloWallpaper::setCameraPosition(AVCaptureDevicePosition position) {
  const auto input = firstVideoInput();
  if (input && input->device()->position() != position) {
    replaceWithOtherCamera(input);
  }
}

std::shared_ptr<AVCaptureDeviceInput> NivloWallpaper::firstVideoInput() const {
  if (!captureSession_) {
    return nullptr;
  }
  for (auto& input : captureSession_->inputs()) {
    if (input->device()->hasMediaType(AVMediaTypeVideo)) {
      return input;
    }
  }
  return nullptr;
}

/// Only the current camera decides which one comes next, so one of unknown position is replaced by the front
/// camera. If there is no other camera, the session keeps the one that it has.
void NivloWallpaper::replaceWithOtherCamera(const std::shared_ptr<AVCaptureDeviceInput>& input) {
  const bool front = input->device()->position() == AVCaptureDevicePosition::Front;
  const auto other =
      cameraWithPosition(front ? AVCaptureDevicePosition::Back : AVCaptureDevicePosition::Front);
  const auto replacement = AVCaptureDeviceInput::deviceInputWithDevice(other);
  captureSession_->beginConfiguration();
  captureSession_->removeInput(input);
  captureSession_->addInput(replacement);
  captureSession_->commitConfiguration();
}

}  // namespace nivlo
