// "nivlo pick".
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace nivlo {

struct PickOptions {
  std::filesystem::path bundle;
};

/// Lets a person pick one of the bundle's presets: the running Nivlo shows it, and so does the one that the
/// desktop starts. Returns the exit status.
int runPick(const PickOptions& options);

/// Applies a preset, counted from 1. Returns what the person should know if that failed, empty on success.
using ChoosePreset = std::function<std::string(int preset)>;

/// Shows the bundle's presets in a window and applies each one that is picked until the window is closed.
/// `current`, counted from 1, is marked at first; 0 marks none. Returns the exit status.
int pickPreset(const std::filesystem::path& bundle, int current, const ChoosePreset& choose);

}  // namespace nivlo
