// Desktops that start only what their own configuration names.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "host/service/LauncherTexts.hpp"

namespace nivlo {

/// A compositor or window manager that neither runs autostart entries nor is known to start systemd's
/// graphical session.
struct ConfiguredDesktop {
  std::string_view name;  ///< as in XDG_CURRENT_DESKTOP
  const char* variable;   ///< set in its sessions; null if there is none
  std::string_view file;  ///< its configuration, relative to the user's configuration folder
  const char* standard;   ///< the file that it reads while that one is absent; null if nothing is lost
  std::string (*write)(const LaunchCommand& command);  ///< writes the line, without a line break
};

/// Returns all that are known.
std::span<const ConfiguredDesktop> configuredDesktops();

/// Returns the absolute path of the desktop's configuration for this user, whether or not it exists.
std::filesystem::path fileOf(const ConfiguredDesktop& desktop);

/// Writes a command for a POSIX shell. Only words that need quotes get them.
std::string shellLine(const LaunchCommand& command);

}  // namespace nivlo
