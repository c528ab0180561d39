// The windows in Hyprland's descriptions of its desktop.
#pragma once

#include <optional>
#include <string_view>

#include "host/surfaces/windows/DesktopWindows.hpp"

namespace nivlo {

/// Reads the answers to the requests "monitors" and "clients" in JSON, as https://wiki.hypr.land/IPC/ and its
/// page on hyprctl describe them. Returns nothing if one of them is not such an answer.
std::optional<DesktopWindows> windowsInHyprland(std::string_view monitors, std::string_view clients);

}  // namespace nivlo
