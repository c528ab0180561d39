// A picture or a film in a file that stands in for a camera.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// A driver with one camera, called "file:" and the path. A picture (see loadImageFile) is read now and
/// delivered ten times a second, scaled down where it is larger than cameras are; a film is played in a loop,
/// at its own pace, without its sound. A film that cannot be played on is reported once and tried again and
/// again, with growing pauses. Null when the file is neither, and `error`, if given, then says why and what
/// to do. Takes up to a few seconds for a film.
std::unique_ptr<CameraDriver> makeFileCamera(const std::filesystem::path& path,
                                             AVCaptureDevicePosition position, std::string* error);

}  // namespace nivlo
