// The cameras that PipeWire offers.
#pragma once

#include <memory>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// All nodes of class Video/Source. Waits up to a second for the first list of them; without a PipeWire
/// daemon there are no cameras, and a daemon that starts later, or is restarted, is picked up in the
/// background. A camera that is opened before it is there is waited for. A camera's unique ID is "pipewire:"
/// and its node's name. Frames share the camera's own buffers where that is possible.
std::unique_ptr<CameraDriver> makePipeWireCameras();

}  // namespace nivlo
