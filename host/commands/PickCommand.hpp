// "nivlo pick".
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "host/bundle/BundleLoader.hpp"
#include "host/commands/Command.hpp"

namespace nivlo {

/// Lets a person pick one of the wallpaper's presets: the running Nivlo shows it, and so does the one that
/// the desktop starts.
class PickCommand : public Command {
 public:
  explicit PickCommand(CLI::App& app);
  int run() const override;

 private:
  std::filesystem::path bundle_ = defaultBundlePath();
};

/// Applies a preset, counted from 1. Returns what the person should know if that failed, empty on success.
using ChoosePreset = std::function<std::string(int preset)>;

/// Shows the bundle's presets in a window and applies each one that is picked until the window is closed.
/// `current`, counted from 1, is marked at first; 0 marks none. Returns the exit status.
int pickPreset(const std::filesystem::path& bundle, int current, const ChoosePreset& choose);

}  // namespace nivlo
