// What the command line can ask for.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "host/scan/ScanCommand.hpp"
#include "linux/camera/selection/CameraSource.hpp"

namespace nivlo {

/// Auto is a window where there is a display, else offscreen.
enum class SurfaceKind { Auto, Offscreen, Window };

struct RunOptions {
  std::filesystem::path bundle;
  int preset = 1;                     ///< 1 to 4
  std::optional<bool> scans;          ///< overrides the preset
  std::optional<std::string> camera;  ///< "back" or "front", overrides the preset
  CameraSources sources;
  std::string machine;                                       ///< the machine identifier; empty: the kernel's
  std::optional<std::filesystem::path> accelerometerScript;  ///< in place of the sensor
  SurfaceKind surface = SurfaceKind::Auto;
  int width = 1920;   ///< pixels
  int height = 1080;  ///< pixels
  std::optional<std::filesystem::path> snapshot;
  std::optional<int> frames;                            ///< ends after so many drawn frames
  std::optional<std::chrono::duration<double>> runFor;  ///< ends after this time
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
