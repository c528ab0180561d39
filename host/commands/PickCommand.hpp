// "nivlo pick".
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace nivlo {

struct PickOptions {
  std::filesystem::path bundle;
  int current = 0;  ///< the preset that is marked at first, counted from 1; 0 marks none
  /// Applies a preset, counted from 1, at once. Returns what a person should know where that failed, empty on
  /// success.
  std::function<std::string(int preset)> choose;
};

/// Shows the bundle's presets in a window and applies what is picked until the window is closed. Returns the
/// exit status.
int runPick(const PickOptions& options);

}  // namespace nivlo
