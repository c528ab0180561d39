#include "host/control/client/HandOver.hpp"

#include <iostream>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "host/control/client/ControlClient.hpp"
#include "host/text/VisibleText.hpp"

namespace nivlo {

namespace {

GVariant* changesFor(const std::filesystem::path& bundle, const ShowOptions& changes) {
  GVariantBuilder entries;
  g_variant_builder_init(&entries, G_VARIANT_TYPE_VARDICT);
  if (!bundle.empty()) {
    const Owned<gchar, g_free> path(g_utf8_make_valid(bundle.c_str(), -1));
    g_variant_builder_add(&entries, "{sv}", "wallpaper", g_variant_new_string(path.get()));
  }
  if (changes.preset) {
    g_variant_builder_add(&entries, "{sv}", "preset", g_variant_new_int32(*changes.preset));
  }
  if (changes.scans) {
    g_variant_builder_add(&entries, "{sv}", "scanning", g_variant_new_boolean(*changes.scans));
  }
  if (changes.camera) {
    g_variant_builder_add(&entries, "{sv}", "camera", g_variant_new_string(changes.camera->c_str()));
  }
  return g_variant_new("(@a{sv})", g_variant_builder_end(&entries));
}

std::string inWords(const std::string& wallpaper, const ShowOptions& changes) {
  std::vector<std::string> parts;
  if (!wallpaper.empty()) {
    parts.push_back(fmt::format("shows {}", visibleText(wallpaper)));
  }
  if (changes.preset) {
    parts.push_back(fmt::format("shows preset {}", *changes.preset));
  }
  if (changes.scans) {
    parts.emplace_back(*changes.scans ? "offers codes" : "ignores codes");
  }
  if (changes.camera) {
    parts.push_back(fmt::format("uses the {} camera", *changes.camera));
  }
  return parts.empty() ? "" : fmt::format("; it now {}", fmt::join(parts, ", "));
}

std::string inWords(const std::vector<GivenOption>& options) {
  std::vector<std::string> words;
  words.reserve(options.size());
  for (const auto& option : options) {
    words.push_back(fmt::format("{}={}", option.name, option.value));
  }
  return fmt::format("{}", fmt::join(words, ", "));
}

}  // namespace

int handOver(const std::filesystem::path& bundle, const ShowOptions& changes,
             const std::vector<GivenOption>& startOnly) {
  const ControlClient running;
  const auto changed = running.call("Change", changesFor(bundle, changes));
  const auto status = running.call("GetStatus");
  if (!changed.error.empty() || !status.error.empty()) {
    std::cerr << fmt::format("nivlo: Nivlo is already running and cannot take these options over: {}\n",
                             changed.error.empty() ? status.error : changed.error);
    return 1;
  }
  std::cout << fmt::format("Nivlo is already running (process {}){}\n", status.number("process"),
                           inWords(bundle.empty() ? "" : status.text("wallpaper"), changes));
  if (!startOnly.empty()) {
    std::cout << fmt::format(
        "{} {} ignored: Nivlo is already running. To use such options, end it first: 'nivlo ctl quit'\n",
        inWords(startOnly), startOnly.size() == 1 ? "was" : "were");
  }
  return 0;
}

}  // namespace nivlo
