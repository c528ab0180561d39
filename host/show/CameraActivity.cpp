#include "host/show/CameraActivity.hpp"

#include <algorithm>

namespace nivlo {

void CameraActivity::follow(CameraEvent event, const CameraInfo& camera) {
  if (event == CameraEvent::Opened) {
    open_.push_back(camera);
    ++openings_;
    lastPosition_ = camera.position;
  } else if (event == CameraEvent::Closed) {
    const auto closed = std::find_if(
        open_.begin(), open_.end(), [&](const CameraInfo& info) { return info.uniqueID == camera.uniqueID; });
    if (closed != open_.end()) {
      open_.erase(closed);
    }
  }
}

std::optional<CameraInfo> CameraActivity::open() const {
  return open_.empty() ? std::nullopt : std::optional(open_.back());
}

const char* sideInWords(AVCaptureDevicePosition position) {
  switch (position) {
    case AVCaptureDevicePosition::Back:
      return "back";
    case AVCaptureDevicePosition::Front:
      return "front";
    case AVCaptureDevicePosition::Unspecified:
      break;
  }
  return "unspecified";
}

}  // namespace nivlo
