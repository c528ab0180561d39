// The options of "nivlo run".
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/control/client/HandOver.hpp"
#include "host/show/ShowOptions.hpp"
#include "host/surfaces/ChooseSurface.hpp"
#include "linux/camera/selection/CameraSource.hpp"

namespace nivlo {

/// The ways of asking the user a question.
enum class AlertKind {
  Auto,      ///< in the desktop's dialogs if the wallpaper is shown on a desktop, else in the terminal
  Desktop,   ///< in the desktop's dialogs
  Terminal,  ///< in the terminal
};

/// The ways of sparing the battery.
enum class OnBattery {
  Run,    ///< nothing
  Slow,   ///< half as many pictures, and half as many looks for codes
  Pause,  ///< the camera is closed
};

struct RunOptions {
  std::filesystem::path bundle;  ///< empty: Nivlo's own
  ShowOptions show;
  CameraSources sources;
  std::string machine;                                       ///< the machine identifier; empty: the kernel's
  std::optional<std::filesystem::path> accelerometerScript;  ///< played instead of reading the sensor
  SurfaceKind surfaceKind = SurfaceKind::Auto;
  SurfaceOptions surface;
  AlertKind alerts = AlertKind::Auto;
  OnBattery onBattery = OnBattery::Slow;
  std::optional<int> picturesPerSecond;                 ///< at most; from 1 to 240
  std::optional<std::filesystem::path> snapshot;        ///< the PNG file that pictures are saved to
  std::optional<int> frames;                            ///< the program ends after drawing this many
  std::optional<std::chrono::duration<double>> runFor;  ///< the program ends after this time
  std::vector<GivenOption> startOnly;  ///< those given that a Nivlo already running cannot take over
};

}  // namespace nivlo
