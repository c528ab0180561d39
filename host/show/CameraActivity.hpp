// Which camera is open.
#pragma once

#include <optional>
#include <vector>

#include "host/show/ObservedCameras.hpp"

namespace nivlo {

/// Knows which cameras are open from the events that it is told. Main thread only.
class CameraActivity {
 public:
  void follow(CameraEvent event, const CameraInfo& camera);

  /// The open camera. While a session switches cameras two are open, and the one opened last counts.
  std::optional<CameraInfo> open() const;
  /// How often a camera has been opened so far.
  unsigned openings() const { return openings_; }
  /// Position of the camera that was opened last, also after it was closed.
  AVCaptureDevicePosition lastPosition() const { return lastPosition_; }

 private:
  std::vector<CameraInfo> open_;  // in the order of opening
  unsigned openings_ = 0;
  AVCaptureDevicePosition lastPosition_ = AVCaptureDevicePosition::Unspecified;
};

/// "back", "front" or "unspecified".
const char* sideInWords(AVCaptureDevicePosition position);

}  // namespace nivlo
