// The running program's status, to be read.
#pragma once

#include <string>

#include <glib.h>

namespace nivlo {

// Both take what GetStatus answers, an a{sv}, and end without a newline.

/// One JSON object; "camera" is null while none is open.
std::string statusAsJson(GVariant* status);

/// A line each for preset, camera, scanning and wallpaper; where the camera is off, with the reason.
std::string statusInWords(GVariant* status);

}  // namespace nivlo
