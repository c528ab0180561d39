// The windows in sway's description of its desktop.
#pragma once

#include <optional>
#include <string_view>

#include "host/surfaces/windows/DesktopWindows.hpp"

namespace nivlo {

/// Reads the answer to GET_TREE (sway-ipc(7)). Returns nothing if it is not one.
std::optional<DesktopWindows> windowsInSwayTree(std::string_view answer);

/// Returns whether a window event can mean that windows have changed their places. Many programs change
/// their titles all the time, which does not count.
bool movesWindows(std::string_view windowEvent);

}  // namespace nivlo
