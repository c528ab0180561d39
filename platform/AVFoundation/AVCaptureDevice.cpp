#include "platform/AVFoundation/AVCaptureDevice.hpp"

#include <algorithm>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

std::shared_ptr<AVCaptureDevice> AVCaptureDevice::defaultDeviceWithMediaType(std::string_view mediaType) {
  const auto devices = devicesWithMediaType(mediaType);
  const auto back = std::find_if(devices.begin(), devices.end(), [](const auto& device) {
    return device->position() == AVCaptureDevicePosition::Back;
  });
  if (back != devices.end()) {
    return *back;
  }
  return devices.empty() ? nullptr : devices.front();
}

std::vector<std::shared_ptr<AVCaptureDevice>> AVCaptureDevice::devicesWithMediaType(
    std::string_view mediaType) {
  std::vector<std::shared_ptr<AVCaptureDevice>> devices;
  if (mediaType != AVMediaTypeVideo || !drivers().cameras) {
    return devices;
  }
  for (auto& info : drivers().cameras->cameras()) {
    devices.push_back(std::make_shared<AVCaptureDevice>(std::move(info)));
  }
  return devices;
}

PictureTurn AVCaptureDevice::turn() const {
  const bool asInMirror = position() == AVCaptureDevicePosition::Front;
  return {info_.turn.clockwise, info_.turn.mirrored != asInMirror};
}

}  // namespace nivlo
