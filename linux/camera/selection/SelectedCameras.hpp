// One camera driver for all the cameras that the user chose.
#pragma once

#include <memory>
#include <string>

#include "linux/camera/selection/CameraSource.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// A camera that was chosen for a side counts as facing that side, whatever it says itself, and is listed
/// even while it is unplugged. An automatic side (CameraSource::Kind::Auto) has the PipeWire cameras that
/// face it; those that do not say which side they face are listed last. When PipeWire has no camera the first
/// time it is asked, the demo cameras take its place for good, and the log says so once. Null when a file
/// cannot be used; `*error` then says why and what to do.
std::unique_ptr<CameraDriver> makeSelectedCameras(const CameraSources& sources, std::string* error);

}  // namespace nivlo
