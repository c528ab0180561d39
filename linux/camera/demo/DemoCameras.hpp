// Two cameras that need no hardware.
#pragma once

#include <memory>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// A driver with "demo:back", an evening at a desk where one code after the other is held up, and
/// "demo:front", a face on a bright day. Both deliver 1280x720 BGRx at 20 frames a second, drawn as they are
/// needed.
std::unique_ptr<CameraDriver> makeDemoCameras();

}  // namespace nivlo
