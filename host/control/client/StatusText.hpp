// Writes the running program's status.
#pragma once

#include <string>

#include <glib.h>

namespace nivlo {

// Both take the a{sv} that GetStatus answers. The results do not end in a newline.

/// Writes one JSON object with the keys of GetStatus; "camera" is null while none is open.
std::string statusAsJson(GVariant* status);

/// Writes lines for people to read, which also say why the camera is off or the wallpaper is not shown.
std::string statusInWords(GVariant* status);

}  // namespace nivlo
