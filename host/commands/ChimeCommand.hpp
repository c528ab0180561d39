// "nivlo chime".
#pragma once

#include <filesystem>

#include "host/commands/Command.hpp"

namespace nivlo {

/// Plays the wallpaper's chime to its end.
class ChimeCommand : public Command {
 public:
  explicit ChimeCommand(CLI::App& app);
  int run() const override;

 private:
  std::filesystem::path bundle_;
};

}  // namespace nivlo
