// "nivlo devices".
#pragma once

#include <string>

#include "host/commands/Command.hpp"
#include "linux/camera/selection/CameraSource.hpp"

namespace nivlo {

/// Lists the machine's names and the cameras that the wallpaper would find.
class DevicesCommand : public Command {
 public:
  explicit DevicesCommand(CLI::App& app);
  int run() const override;

 private:
  CameraSources sources_;
  std::string machine_;
};

}  // namespace nivlo
