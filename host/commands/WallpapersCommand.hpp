// "nivlo wallpapers".
#pragma once

#include <string>

#include "host/commands/Command.hpp"

namespace nivlo {

/// Lists the installed wallpapers, those that cannot be used with the cause.
class WallpapersCommand : public Command {
 public:
  explicit WallpapersCommand(CLI::App& app);
  int run() const override;

 private:
  std::string machine_;
  bool json_ = false;
};

}  // namespace nivlo
