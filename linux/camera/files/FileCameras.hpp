// A camera driver that plays a picture or a film from a file.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Makes a driver with one camera, whose unique ID is "file:" and the path. A picture (see loadImageFile) is
/// read now and delivered ten times a second, at most as large as a 4K camera's. A film is played in a loop
/// at its own pace, without sound; when it cannot be played any further, that is logged once and it is tried
/// again after growing delays. Null when the file is neither; `error`, unless null, then says why and what to
/// do. Takes a few seconds at most.
std::unique_ptr<CameraDriver> makeFileCamera(const std::filesystem::path& path,
                                             AVCaptureDevicePosition position, std::string* error);

}  // namespace nivlo
