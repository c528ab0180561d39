#include "host/commands/SharedOptions.hpp"

#include <charconv>
#include <string_view>
#include <system_error>
#include <vector>

#include <CLI/App.hpp>
#include <fmt/format.h>

#include "host/bundle/InstalledWallpapers.hpp"

namespace nivlo {

namespace {

constexpr double kMostSeconds = 4'000'000;  // GLib's timers count milliseconds in 32 bits

/// Returns 0 if the text is something other than one number of this type.
template <class Number>
Number numberIn(const std::string& text) {
  Number number = 0;
  const auto* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  return read.ec == std::errc() && read.ptr == end ? number : 0;
}

/// Adds an option that is given once for each side, and hands each of its values to `apply`.
CLI::Option* addForSides(CLI::App& app, const std::string& name,
                         std::string (*apply)(std::string_view text, CameraSources* sources),
                         CameraSources& sources, const std::string& type, const std::string& help) {
  const auto applyAll = [&sources, apply, name](const std::vector<std::string>& texts) {
    for (const auto& text : texts) {
      if (const auto error = apply(text, &sources); !error.empty()) {
        throw CLI::ValidationError(name, error);
      }
    }
  };
  return app.add_option_function<std::vector<std::string>>(name, applyAll, help)->type_name(type);
}

}  // namespace

CLI::Option* addBundle(CLI::App& app, std::filesystem::path& bundle) {
  const auto find = [&bundle](const std::string& nameOrPath) {
    std::string error;
    bundle = findBundle(nameOrPath, &error);
    if (!error.empty()) {
      throw CLI::ValidationError("--bundle", error);
    }
  };
  return app
      .add_option_function<std::string>(
          "--bundle", find,
          "Use this wallpaper instead of Nivlo's own: an installed one by its name (see "
          "'nivlo wallpapers'), or a bundle by its folder")
      ->type_name("WALLPAPER");
}

CLI::Option* addSources(CLI::App& app, CameraSources& sources) {
  return addForSides(
      app, "--source", applyCameraSource, sources, "SIDE=SOURCE",
      "Choose what serves as a camera: SIDE is back or front; SOURCE is auto, demo, pipewire:NODE, file:PATH "
      "or "
      "none. auto takes the PipeWire cameras, or the demo while there are none (see 'nivlo devices')");
}

CLI::Option* addTurns(CLI::App& app, CameraSources& sources) {
  return addForSides(app, "--turn", applyCameraTurn, sources, "SIDE=TURN",
                     "Turn the picture of the back or the front camera: TURN is 90, 180 or 270 degrees "
                     "clockwise, or mirror to "
                     "exchange left and right");
}

CLI::Option* addMachine(CLI::App& app, std::string& machine) {
  return app
      .add_option("--machine", machine,
                  "Go by this machine identifier, for example iPhone4,1, instead of the kernel's")
      ->type_name("IDENTIFIER");
}

std::string checkCount(const std::string& text) {
  return numberIn<int>(text) > 0 ? "" : fmt::format("'{}' is not a whole number from 1", text);
}

std::string checkSeconds(const std::string& text) {
  const auto seconds = numberIn<double>(text);
  return seconds > 0 && seconds <= kMostSeconds
             ? ""
             : fmt::format("'{}' is not a number above 0 and up to {}", text, kMostSeconds);
}

}  // namespace nivlo
