// A camera.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

inline constexpr std::string_view AVMediaTypeVideo = "vide";

class AVCaptureDevice {
 public:
  explicit AVCaptureDevice(CameraInfo info) : info_(std::move(info)) {}

  /// The first camera that looks to the back, else the first there is; null when there is none. Main thread
  /// only.
  static std::shared_ptr<AVCaptureDevice> defaultDeviceWithMediaType(std::string_view mediaType);
  /// All cameras, in the driver's order. Main thread only.
  static std::vector<std::shared_ptr<AVCaptureDevice>> devicesWithMediaType(std::string_view mediaType);

  AVCaptureDevicePosition position() const { return info_.position; }
  bool hasMediaType(std::string_view mediaType) const { return mediaType == AVMediaTypeVideo; }
  const std::string& uniqueID() const { return info_.uniqueID; }
  const std::string& localizedName() const { return info_.localizedName; }

 private:
  CameraInfo info_;
};

}  // namespace nivlo
