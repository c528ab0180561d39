// "nivlo presets".
#pragma once

#include <filesystem>

#include "host/commands/Command.hpp"

namespace nivlo {

/// Lists the wallpaper's presets.
class PresetsCommand : public Command {
 public:
  explicit PresetsCommand(CLI::App& app);
  int run() const override;

 private:
  std::filesystem::path bundle_;
  bool json_ = false;
};

}  // namespace nivlo
