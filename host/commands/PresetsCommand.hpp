// "nivlo presets".
#pragma once

#include <filesystem>

#include "host/bundle/BundleLoader.hpp"
#include "host/commands/Command.hpp"

namespace nivlo {

/// Lists the wallpaper's presets.
class PresetsCommand : public Command {
 public:
  explicit PresetsCommand(CLI::App& app);
  int run() const override;

 private:
  std::filesystem::path bundle_ = defaultBundlePath();
  bool json_ = false;
};

}  // namespace nivlo
