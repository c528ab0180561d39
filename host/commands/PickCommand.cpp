#include "host/commands/PickCommand.hpp"

#include <cctype>
#include <iostream>
#include <utility>
#include <vector>

#include "host/alerts/gtk/Toolkit.hpp"
#include "host/bundle/BundleLoader.hpp"
#include "host/commands/SharedOptions.hpp"
#include "host/control/client/PresetChoice.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/pick/PickWindow.hpp"

namespace nivlo {

namespace {

std::vector<PickEntry> entriesOf(const WallpaperBundle& bundle) {
  std::vector<PickEntry> entries;
  for (const auto& preset : bundle.presets()) {
    auto words = preset.description;
    words.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(words.front())));
    entries.push_back({std::move(words), bundle.presetPicture(static_cast<int>(entries.size()) + 1)});
  }
  return entries;
}

}  // namespace

PickCommand::PickCommand(CLI::App& app)
    : Command(
          app, "pick",
          "Choose a preset by its picture, for the running Nivlo and for the one that the desktop starts") {
  addBundle(arguments(), bundle_);
}

int PickCommand::run() const { return pickPreset(bundle_, shownPreset(), choosePreset); }

int pickPreset(const std::filesystem::path& path, int current, const ChoosePreset& choose) {
  std::string error;
  const auto bundle = openWallpaperBundle(path, &error);
  if (!bundle) {
    std::cerr << "nivlo: " << error << '\n';
    return 1;
  }
  if (!startToolkit()) {
    return 1;
  }
  MainLoop loop;
  const PickWindow window(entriesOf(*bundle), current, choose, [&loop] { loop.quit(); });
  loop.run();
  return 0;
}

}  // namespace nivlo
