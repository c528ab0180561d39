// "nivlo pick".
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/bundle/WallpaperBundle.hpp"
#include "host/commands/Command.hpp"
#include "host/control/client/WallpaperChoice.hpp"

namespace nivlo {

/// Lets a user pick a wallpaper and one of its presets: the running Nivlo shows it, and so does the one that
/// the desktop starts.
class PickCommand : public Command {
 public:
  explicit PickCommand(CLI::App& app);
  int run() const override;

 private:
  std::filesystem::path bundle_;  // empty: any installed wallpaper
};

/// Applies a choice. Returns what the user should know if that failed, empty on success.
using ChooseWallpaper = std::function<std::string(const WallpaperChoice&)>;

/// Shows the wallpapers in a window and applies each choice until the window is closed. `shown` is marked at
/// first. Returns the exit status.
int pickWallpaper(const std::vector<std::shared_ptr<const WallpaperBundle>>& wallpapers,
                  const WallpaperChoice& shown, const ChooseWallpaper& choose);

}  // namespace nivlo
