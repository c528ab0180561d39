#include "host/commands/PresetsCommand.hpp"

#include <iostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "host/bundle/BundleLoader.hpp"
#include "host/bundle/PresetWords.hpp"
#include "host/commands/SharedOptions.hpp"

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

PresetsCommand::PresetsCommand(CLI::App& app) : Command(app, "presets", "List the wallpaper's presets") {
  arguments().add_flag("--json", json_,
                       "Print one JSON array: each preset's number, its options and a description");
  addBundle(arguments(), bundle_);
}

int PresetsCommand::run() const {
  std::string error;
  const auto* wallpaperClass = loadWallpaperClass(bundle_, &error);
  if (!wallpaperClass) {
    std::cerr << "nivlo: " << error << '\n';
    return 1;
  }
  const auto presets = wallpaperClass->presetWallpaperOptions();
  if (json_) {
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
