#include "host/commands/PresetsCommand.hpp"

#include <iostream>
#include <string>

#include "host/bundle/BundleLoader.hpp"

namespace nivlo {

namespace {

std::string inWords(const NSDictionary& preset) {
  const std::string camera =
      isEqualToString(preset.objectForKey("cameraPosition"), "front") ? "front" : "back";
  const bool scans = boolValue(preset.objectForKey("qr"));
  return "the " + camera + " camera" + (scans ? ", codes are offered" : ", codes are left alone");
}

}  // namespace

int runPresets(const PresetsOptions& options) {
  std::string error;
  const auto* wallpaperClass = loadWallpaperClass(options.bundle, &error);
  if (!wallpaperClass) {
    std::cerr << "nivlo: " << error << '\n';
    return 1;
  }
  int number = 1;
  for (const auto& preset : wallpaperClass->presetWallpaperOptions()) {
    std::cout << number++ << "  " << inWords(preset) << '\n';
  }
  return 0;
}

}  // namespace nivlo
