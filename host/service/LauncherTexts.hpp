// The files that start the program with the desktop.
#pragma once

#include <string>
#include <vector>

namespace nivlo {

/// What to run: the program's absolute path and its arguments.
using LaunchCommand = std::vector<std::string>;

/// A systemd user unit that belongs to the graphical session, and restarts a program that failed, ever more
/// slowly.
std::string unitText(const LaunchCommand& command);

/// An autostart entry of the desktop.
std::string autostartText(const LaunchCommand& command);

/// The text of either with another preset in its command; nothing else changes. The same text where its
/// command names no preset.
std::string withPreset(const std::string& text, int preset);

}  // namespace nivlo
