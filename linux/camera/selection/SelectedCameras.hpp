// The cameras that the user chose, as one set.
#pragma once

#include <memory>
#include <string>

#include "linux/camera/selection/CameraSource.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// A camera that was chosen for a side looks that way, whatever it says itself, and is listed even while it
/// is unplugged. On an automatic side stand the PipeWire cameras that look that way; those that do not say
/// which way they look are listed last. Where there is no PipeWire camera when first asked, the demo cameras
/// stand in for good, and one line in the log says so. Null, with the cause in `*error`, when a file cannot
/// be used.
std::unique_ptr<CameraDriver> makeSelectedCameras(const CameraSources& sources, std::string* error);

}  // namespace nivlo
