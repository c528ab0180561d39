// A camera as a session's input.
#pragma once

#include <memory>
#include <utility>

#include "platform/AVFoundation/AVCaptureDevice.hpp"

namespace nivlo {

class AVCaptureDeviceInput {
 public:
  /// Null for a null device.
  static std::shared_ptr<AVCaptureDeviceInput> deviceInputWithDevice(
      std::shared_ptr<AVCaptureDevice> device) {
    return device ? std::shared_ptr<AVCaptureDeviceInput>(new AVCaptureDeviceInput(std::move(device)))
                  : nullptr;
  }
  static std::shared_ptr<AVCaptureDeviceInput> initWithDevice(std::shared_ptr<AVCaptureDevice> device) {
    return deviceInputWithDevice(std::move(device));
  }

  const std::shared_ptr<AVCaptureDevice>& device() const { return device_; }

 private:
  explicit AVCaptureDeviceInput(std::shared_ptr<AVCaptureDevice> device) : device_(std::move(device)) {}
  std::shared_ptr<AVCaptureDevice> device_;
};

}  // namespace nivlo
