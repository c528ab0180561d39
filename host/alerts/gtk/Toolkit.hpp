// Starts the desktop's toolkit.
#pragma once

namespace nivlo {

/// Starts GTK and libadwaita when it is called for the first time, so that a wallpaper that has not shown a
/// dialog does not carry a toolkit. Returns whether there is a desktop to show windows on; if there is none,
/// that is logged once. Main thread only.
bool startToolkit();

}  // namespace nivlo
