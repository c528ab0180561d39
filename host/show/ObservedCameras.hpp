// Cameras that tell what happens to them.
#pragma once

#include <functional>
#include <memory>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

enum class CameraEvent {
  Opened,
  Refused,  ///< could not be opened; of the camera, only the unique ID is known
  Silent,   ///< open, but no frame has arrived for a few seconds
  Resumed,  ///< frames arrive again
  Closed,   ///< no further frame arrives
};

/// Called on the main thread.
using CameraObserver = std::function<void(CameraEvent event, const CameraInfo& camera)>;

/// Returns the same cameras, with every event of theirs told to the observer; null when `cameras` is null.
/// Main thread only, which goes for closing a stream too.
std::unique_ptr<CameraDriver> observed(std::unique_ptr<CameraDriver> cameras, CameraObserver observer);

}  // namespace nivlo
