#include "host/show/CameraActivity.hpp"

#include <algorithm>

namespace nivlo {

void CameraActivity::follow(CameraEvent event, const ObservedCamera& camera) {
  if (event == CameraEvent::Opened) {
    open_.push_back(camera);
    ++openings_;
    lastPosition_ = camera.info.position;
  } else if (event == CameraEvent::Refused) {
    ++refusals_;
  } else if (event == CameraEvent::Closed) {
    const auto closed = std::ranges::find(open_, camera.info.uniqueID,
                                          [](const ObservedCamera& open) { return open.info.uniqueID; });
    if (closed != open_.end()) {
      open_.erase(closed);
    }
  }
  onEvent_();
}

std::optional<ObservedCamera> CameraActivity::open() const {
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
