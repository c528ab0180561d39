// Which camera is open.
#pragma once

#include <memory>
#include <optional>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Main thread only.
struct CameraActivity {
  std::optional<CameraInfo> open;
  unsigned openings = 0;                                                        ///< so far
  AVCaptureDevicePosition lastPosition = AVCaptureDevicePosition::Unspecified;  ///< of the camera opened last
};

/// "back", "front" or "unspecified".
const char* sideInWords(AVCaptureDevicePosition position);

/// The same cameras; the activity follows which one is open. While a session changes cameras both are: the
/// later one counts.
std::unique_ptr<CameraDriver> observed(std::unique_ptr<CameraDriver> cameras,
                                       std::shared_ptr<CameraActivity> activity);

}  // namespace nivlo
