#include "host/commands/PresetsCommand.hpp"

#include <iostream>
#include <string>
#include <utility>
#include <variant>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "host/bundle/BundleLoader.hpp"
#include "host/commands/SharedOptions.hpp"
#include "host/text/VisibleText.hpp"

namespace nivlo {

namespace {

std::string asJson(const WallpaperBundle& bundle) {
  auto result = nlohmann::ordered_json::array();
  int number = 1;
  for (const auto& preset : bundle.presets()) {
    nlohmann::ordered_json entry{{"preset", nullptr}};
    for (const auto& [key, value] : preset.options.entries()) {
      std::visit([&, &name = key](const auto& held) { entry[name] = held; }, value);
    }
    // Set last: a wallpaper may have option keys of these names.
    entry["preset"] = number++;
    entry["description"] = preset.description;
    result.push_back(std::move(entry));
  }
  return result.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

PresetsCommand::PresetsCommand(CLI::App& app) : Command(app, "presets", "List the wallpaper's presets") {
  arguments().add_flag("--json", json_,
                       "Print one JSON array: each preset's number, its options and a description");
  addBundle(arguments(), bundle_);
}

int PresetsCommand::run() const {
  std::string error;
  const auto bundle = openWallpaperBundle(bundle_, &error);
  if (!bundle) {
    std::cerr << "nivlo: " << visibleText(error) << '\n';
    return 1;
  }
  if (json_) {
    std::cout << asJson(*bundle) << '\n';
    return 0;
  }
  int number = 1;
  for (const auto& preset : bundle->presets()) {
    std::cout << number++ << "  " << preset.description << '\n';
  }
  return 0;
}

}  // namespace nivlo
