// One camera driver for all the cameras that the user chose.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "linux/camera/selection/CameraSource.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// A camera that was chosen for a side counts as facing that side, whatever it says itself, and is listed
/// even while it is unplugged. An automatic side (CameraSource::Kind::Auto) has the PipeWire cameras that
/// face it; those that do not say which side they face are listed last, and may count as facing it (see
/// AssumedSides). The turn of a side goes for the cameras that face it; that of the back also for those that
/// face no known side. When PipeWire has no camera the first
/// time it is asked, the demo cameras stand in until it has one, and the log says why. Then they are no
/// longer listed, and `onReplaced` is called on the main thread; demo cameras that are open stay so until
/// they are closed. Null when a file cannot be used; `*error` then says why and what to do.
std::unique_ptr<CameraDriver> makeSelectedCameras(const CameraSources& sources, std::string* error,
                                                  std::function<void()> onReplaced = {});

}  // namespace nivlo
