// What the command line can ask for.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/commands/CtlCommand.hpp"
#include "host/commands/InstallServiceCommand.hpp"
#include "host/commands/PickCommand.hpp"
#include "host/commands/ScanCommand.hpp"
#include "host/show/WallpaperShow.hpp"
#include "host/surfaces/ChooseSurface.hpp"
#include "linux/camera/selection/CameraSource.hpp"

namespace nivlo {

/// Auto is the desktop's dialogs where the wallpaper is shown on one.
enum class AlertKind { Auto, Desktop, Terminal };

struct RunOptions {
  std::filesystem::path bundle;
  ShowOptions show;
  CameraSources sources;
  std::string machine;                                       ///< the machine identifier; empty: the kernel's
  std::optional<std::filesystem::path> accelerometerScript;  ///< in place of the sensor
  SurfaceKind surfaceKind = SurfaceKind::Auto;
  SurfaceOptions surface;
  AlertKind alerts = AlertKind::Auto;
  std::optional<std::filesystem::path> snapshot;
  std::optional<int> frames;                            ///< ends after so many drawn frames
  std::optional<std::chrono::duration<double>> runFor;  ///< ends after this time
  std::vector<std::string> given;  ///< the options of the command line, as "--name=value"
};

struct PresetsOptions {
  std::filesystem::path bundle;
  bool json = false;
};

struct DevicesOptions {
  CameraSources sources;
  std::string machine;
};

struct ChimeOptions {
  std::filesystem::path bundle;
};

}  // namespace nivlo
