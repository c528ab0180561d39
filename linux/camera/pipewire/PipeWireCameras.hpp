// The camera driver on PipeWire.
#pragma once

#include <memory>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Offers every node of the class Video/Source as a camera, with "pipewire:" and the node's name as its
/// unique ID. Waits up to a second for the daemon's first list. Without a daemon there are no cameras; one
/// that starts later, or is restarted, is found in the background. A camera may be opened before it is
/// plugged in; its frames come once it is. Frames share the camera's own buffers where possible.
std::unique_ptr<CameraDriver> makePipeWireCameras();

}  // namespace nivlo
