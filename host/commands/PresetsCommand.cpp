#include "host/commands/PresetsCommand.hpp"

#include <iostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/bundle/BundleLoader.hpp"
#include "host/bundle/PresetWords.hpp"

namespace nivlo {

namespace {

nlohmann::ordered_json asJson(const std::vector<NSDictionary>& presets) {
  auto result = nlohmann::ordered_json::array();
  int number = 1;
  for (const auto& preset : presets) {
    nlohmann::ordered_json entry{{"preset", number++}};
    for (const auto& [key, value] : preset.entries()) {
      std::visit([&, &name = key](const auto& held) { entry[name] = held; }, value);
    }
    entry["description"] = presetInWords(preset);
    result.push_back(std::move(entry));
  }
  return result;
}

}  // namespace

int runPresets(const PresetsOptions& options) {
  std::string error;
  const auto* wallpaperClass = loadWallpaperClass(options.bundle, &error);
  if (!wallpaperClass) {
    std::cerr << "nivlo: " << error << '\n';
    return 1;
  }
  const auto presets = wallpaperClass->presetWallpaperOptions();
  if (options.json) {
    std::cout << asJson(presets).dump(2) << '\n';
    return 0;
  }
  int number = 1;
  for (const auto& preset : presets) {
    std::cout << number++ << "  " << presetInWords(preset) << '\n';
  }
  return 0;
}

}  // namespace nivlo
