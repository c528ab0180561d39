// The desktop's toolkit.
#pragma once

namespace nivlo {

/// Starts GTK and libadwaita under the program's name, the first time that it is called; so a wallpaper that
/// shows no dialog carries no toolkit. Returns whether there is a desktop to show anything on; that there is
/// none is logged once. Main thread only.
bool startToolkit();

}  // namespace nivlo
