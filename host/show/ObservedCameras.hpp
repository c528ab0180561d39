// Reports what happens to cameras.
#pragma once

#include <functional>
#include <memory>

#include "host/show/CameraPulse.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

enum class CameraEvent {
  Opened,
  Refused,  ///< could not be opened; of the camera, only the unique ID is known
  Started,  ///< the first frame has arrived
  Silent,   ///< open, but no frame has arrived for a few seconds
  Resumed,  ///< frames arrive again
  Closed,   ///< no further frame arrives
};

struct ObservedCamera {
  CameraInfo info;
  std::shared_ptr<const CameraPulse> pulse;  ///< null for a camera that was refused
};

/// Called on the main thread.
using CameraObserver = std::function<void(CameraEvent event, const ObservedCamera& camera)>;

/// Returns the same cameras, and reports all their events to the observer. Null when `cameras` is null. Main
/// thread only, and so is closing a stream.
std::unique_ptr<CameraDriver> observed(std::unique_ptr<CameraDriver> cameras, CameraObserver observer);

}  // namespace nivlo
