// The driver of the demo cameras, which need no hardware.
#pragma once

#include <memory>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Offers two cameras: "demo:back" shows a desk at evening where one code after another is held up, and
/// "demo:front" a face on a bright day. Both deliver 1280x720 BGRx at 20 frames a second. Nothing is drawn
/// while they are closed.
std::unique_ptr<CameraDriver> makeDemoCameras();

}  // namespace nivlo
