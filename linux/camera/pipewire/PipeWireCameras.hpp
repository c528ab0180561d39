// The camera driver on PipeWire.
#pragma once

#include <functional>
#include <memory>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

class PipeWireCameraDriver : public CameraDriver {
 public:
  /// Returns whether the daemon runs, as far as is known.
  virtual bool daemonRuns() = 0;
};

/// Offers every node of the class Video/Source as a camera, with "pipewire:" and the node's name as its
/// unique ID. Waits up to a second for the daemon's first list. Without a daemon there are no cameras; one
/// that starts later, or is restarted, is found in the background. A camera may be opened before it is
/// plugged in; its frames come once it is. Frames share the camera's own buffers where possible.
///
/// `onChange` is called on the main queue once cameras have come, gone or changed and 0.3 s have passed
/// without another change, because the cameras of a device come one after the other. It is not called after
/// the driver was destroyed.
std::unique_ptr<PipeWireCameraDriver> makePipeWireCameras(std::function<void()> onChange = {});

}  // namespace nivlo
