// The camera that a capture session uses.
#pragma once

#include <memory>
#include <utility>

#include "platform/AVFoundation/AVCaptureDevice.hpp"

namespace nivlo {

/// An input, added to an AVCaptureSession to make it use a camera. Making one does not open the camera.
class AVCaptureDeviceInput {
 public:
  /// Makes an input for the camera. Null for a null device.
  static std::shared_ptr<AVCaptureDeviceInput> deviceInputWithDevice(
      std::shared_ptr<AVCaptureDevice> device) {
    return device ? std::shared_ptr<AVCaptureDeviceInput>(new AVCaptureDeviceInput(std::move(device)))
                  : nullptr;
  }
  /// The same as deviceInputWithDevice.
  static std::shared_ptr<AVCaptureDeviceInput> initWithDevice(std::shared_ptr<AVCaptureDevice> device) {
    return deviceInputWithDevice(std::move(device));
  }

  /// The camera; never null.
  const std::shared_ptr<AVCaptureDevice>& device() const { return device_; }

 private:
  explicit AVCaptureDeviceInput(std::shared_ptr<AVCaptureDevice> device) : device_(std::move(device)) {}
  std::shared_ptr<AVCaptureDevice> device_;
};

}  // namespace nivlo
