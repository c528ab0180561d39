#include "host/commands/PickCommand.hpp"

#include <iostream>
#include <variant>
#include <vector>

#include "host/alerts/gtk/Toolkit.hpp"
#include "host/bundle/BundleLoader.hpp"
#include "host/bundle/PresetWords.hpp"
#include "host/commands/SharedOptions.hpp"
#include "host/control/client/PresetChoice.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/pick/PickWindow.hpp"

namespace nivlo {

namespace {

constexpr auto kThumbnailKey = "kSBUIMagicWallpaperThumbnailNameKey";

PickEntry entryFor(const NSDictionary& preset, const std::filesystem::path& bundle) {
  auto words = presetInWords(preset);
  words.front() = g_ascii_toupper(words.front());
  const auto* value = preset.objectForKey(kThumbnailKey);
  const auto* name = value ? std::get_if<std::string>(value) : nullptr;
  return {.words = words, .picture = name ? bundle / (*name + ".png") : ""};
}

}  // namespace

PickCommand::PickCommand(CLI::App& app)
    : Command(
          app, "pick",
          "Choose a preset by its picture, for the running Nivlo and for the one that the desktop starts") {
  addBundle(arguments(), bundle_);
}

int PickCommand::run() const { return pickPreset(bundle_, shownPreset(), choosePreset); }

int pickPreset(const std::filesystem::path& bundle, int current, const ChoosePreset& choose) {
  std::string error;
  const auto* wallpaperClass = loadWallpaperClass(bundle, &error);
  if (!wallpaperClass) {
    std::cerr << "nivlo: " << error << '\n';
    return 1;
  }
  if (!startToolkit()) {
    return 1;
  }
  std::vector<PickEntry> entries;
  for (const auto& preset : wallpaperClass->presetWallpaperOptions()) {
    entries.push_back(entryFor(preset, bundle));
  }
  MainLoop loop;
  const PickWindow window(entries, current, choose, [&loop] { loop.quit(); });
  loop.run();
  return 0;
}

}  // namespace nivlo
