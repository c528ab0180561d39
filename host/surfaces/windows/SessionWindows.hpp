// The compositor of this session as a source of windows.
#pragma once

#include "host/surfaces/windows/WindowSource.hpp"

namespace nivlo {

/// Returns how to reach the compositor that the environment names: sway by SWAYSOCK, or Hyprland by
/// HYPRLAND_INSTANCE_SIGNATURE. Null if it names none of them.
OpenWindowSource windowsOfSession();

}  // namespace nivlo
