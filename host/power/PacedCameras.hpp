// Passes on fewer frames than the cameras deliver.
#pragma once

#include <memory>

#include "host/render/FramePace.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Returns the same cameras, of whose frames only as many are passed on as the pace allows; the others are
/// dropped before anybody converts or draws them. Null when `cameras` is null.
std::unique_ptr<CameraDriver> paced(std::unique_ptr<CameraDriver> cameras,
                                    std::shared_ptr<const FramePace> pace);

}  // namespace nivlo
