#include "host/commands/RunArguments.hpp"

#include <cstdio>
#include <string_view>

#include <CLI/App.hpp>
#include <fmt/format.h>

#include "host/commands/Choices.hpp"
#include "host/commands/SharedOptions.hpp"
#include "platform/HostContract/WallpaperOptionKeys.hpp"

namespace nivlo {

namespace {

constexpr int kLargestEdge = 16384;  // pixels
constexpr std::string_view kScript = "script:";

constexpr Choice<std::string_view> kCameras[] = {{"back", kCameraPositionBack},
                                                 {"front", kCameraPositionFront}};
constexpr Choice<SurfaceKind> kSurfaces[] = {{"auto", SurfaceKind::Auto},
                                             {"wayland", SurfaceKind::Wayland},
                                             {"x11", SurfaceKind::X11},
                                             {"window", SurfaceKind::Window},
                                             {"offscreen", SurfaceKind::Offscreen}};
constexpr Choice<PausePolicy> kPauses[] = {{"covered", PausePolicy::Covered},
                                           {"fullscreen", PausePolicy::Fullscreen},
                                           {"never", PausePolicy::Never}};
constexpr Choice<DesktopLayer> kLayers[] = {
    {"auto", DesktopLayer::Auto}, {"background", DesktopLayer::Background}, {"bottom", DesktopLayer::Bottom}};
constexpr Choice<AlertKind> kAlerts[] = {
    {"auto", AlertKind::Auto}, {"desktop", AlertKind::Desktop}, {"terminal", AlertKind::Terminal}};

constexpr Choice<OnBattery> kOnBattery[] = {
    {"run", OnBattery::Run}, {"slow", OnBattery::Slow}, {"pause", OnBattery::Pause}};
constexpr int kMostPicturesPerSecond = 240;  // of the fastest screens

std::string checkRate(const std::string& text) {
  return checkCount(text).empty() && text.size() <= 3 && std::stoi(text) <= kMostPicturesPerSecond
             ? ""
             : fmt::format("'{}' is not a whole number from 1 to {}", text, kMostPicturesPerSecond);
}

void readSize(const std::string& text, SurfaceOptions& surface) {
  char extra = 0;
  const int count = std::sscanf(text.c_str(), "%5dx%5d%c", &surface.width, &surface.height, &extra);
  const auto fits = [](int edge) { return edge >= 1 && edge <= kLargestEdge; };
  if (count != 2 || !fits(surface.width) || !fits(surface.height)) {
    throw CLI::ValidationError(
        "--size",
        fmt::format("write WIDTHxHEIGHT in pixels, for example 1920x1080, each from 1 to {}", kLargestEdge));
  }
}

std::filesystem::path scriptIn(const std::string& text) {
  if (!text.starts_with(kScript) || text.size() == kScript.size()) {
    throw CLI::ValidationError("--accelerometer", "write script:FILE");
  }
  return text.substr(kScript.size());
}

}  // namespace

void RunArguments::addTo(CLI::App& app) {
  addLastingTo(app);
  addDrawing(app);
}

void RunArguments::addLastingTo(CLI::App& app) {
  apps_.push_back(&app);
  addChanges(app);
  addDevices(app);
  addBehaviour(app);
}

void RunArguments::addChanges(CLI::App& app) {
  auto* preset = app.add_option("--preset", options_.show.preset,
                                "Show this preset, counted from 1 (see 'nivlo presets')")
                     ->type_name("NUMBER")
                     ->check(checkCount)
                     ->default_str("1");
  auto* scans = addChoice(app, "--qr", kOnOff, options_.show.scans,
                          "Offer the codes that the camera sees (default: as the preset says)");
  auto* camera = addChoice(app, "--camera", kCameras, options_.show.camera,
                           "Start with this camera (default: as the preset says)");
  changes_.insert({preset, scans, camera});
}

void RunArguments::addDevices(CLI::App& app) {
  addSources(app, options_.sources);
  addTurns(app, options_.sources);
  app.add_option_function<std::string>(
         "--accelerometer",
         [this](const std::string& text) { options_.accelerometerScript = scriptIn(text); },
         "Play readings from a file instead of reading the sensor; each line is 'SECONDS, X, Y, Z' with "
         "accelerations in g")
      ->type_name("script:FILE");
  addMachine(app, options_.machine);
}

void RunArguments::addBehaviour(CLI::App& app) {
  app.add_option(
         "--output", options_.surface.output,
         "Show the wallpaper on this output only, for example eDP-1, and wait for it while it is not there "
         "(default: on all outputs)")
      ->type_name("NAME");
  addChoice(
      app, "--layer", kLayers, options_.surface.layer,
      "On Wayland, be the lowest background, or the layer above it, which hides the desktop's own background "
      "and icons; auto is bottom on Plasma, whose desktop would cover the wallpaper, and background "
      "elsewhere");
  addChoice(app, "--pause", kPauses, options_.surface.pause,
            "Close the camera while windows hide the wallpaper on every output: covered counts maximised and "
            "fullscreen windows, fullscreen only those, never none");
  addChoice(
      app, "--on-battery", kOnBattery, options_.onBattery,
      "While the machine runs on its battery, run as usual, slow down to half the pictures and half the "
      "looks for codes, or pause with the camera closed");
  app.add_option("--fps", options_.picturesPerSecond,
                 "Show at most this many pictures a second (default: as many as the camera delivers)")
      ->type_name("NUMBER")
      ->check(checkRate);
  addChoice(app, "--alerts", kAlerts, options_.alerts,
            "Ask in the desktop's dialogs, or in the terminal with numbered buttons; auto is desktop if the "
            "wallpaper is shown on one");
  changes_.insert(addBundle(app, options_.bundle));
}

void RunArguments::addDrawing(CLI::App& app) {
  addChoice(
      app, "--surface", kSurfaces, options_.surfaceKind,
      "Draw on the desktop background (wayland, x11), in an ordinary window, or offscreen, into memory; "
      "auto takes the first that works, and offscreen only at a terminal without a display");
  app.add_option_function<std::string>(
         "--size", [this](const std::string& text) { readSize(text, options_.surface); },
         "The size in pixels of a window, which is at most as large as the screen and closes with Escape on "
         "Wayland, "
         "or of an offscreen surface")
      ->type_name("WIDTHxHEIGHT")
      ->default_str(fmt::format("{}x{}", options_.surface.width, options_.surface.height));
  app.add_option_function<std::string>(
         "--snapshot", [this](const std::string& file) { options_.snapshot = file; },
         "Save the first picture to this PNG file, and replace it with the last one at the end")
      ->type_name("FILE");
  app.add_option("--frames", options_.frames, "Exit after drawing this many frames")
      ->type_name("COUNT")
      ->check(checkCount);
  app.add_option_function<double>(
         "--seconds", [this](double seconds) { options_.runFor = std::chrono::duration<double>(seconds); },
         "Exit after this time")
      ->type_name("SECONDS")
      ->check(checkSeconds);
}

RunOptions RunArguments::options() const {
  auto result = options_;
  const auto isStartOnly = [this](const CLI::Option* option) {
    return option->get_expected_max() > 0 && !changes_.contains(option);
  };
  for (const auto* app : apps_) {
    for (const auto* option : app->get_options(isStartOnly)) {
      for (const auto& value : option->results()) {
        result.startOnly.push_back({option->get_name(), value});
      }
    }
  }
  return result;
}

std::vector<std::string> lastingArguments(const RunOptions& options) {
  const RunOptions standard;
  std::vector<std::string> arguments;
  const auto add = [&](std::string_view name, std::string_view value) {
    arguments.push_back(fmt::format("--{}={}", name, value));
  };
  const auto absolute = [](const std::filesystem::path& path) {
    return std::filesystem::absolute(path).string();
  };
  const auto addCamera = [&](std::string_view side, CameraSource source, const PictureTurn& turn) {
    if (source.kind == CameraSource::Kind::File) {
      source.value = absolute(source.value);
    }
    if (source.kind != CameraSource::Kind::Auto) {
      add("source", fmt::format("{}={}", side, cameraSourceText(source)));
    }
    if (turn.clockwise != 0) {
      add("turn", fmt::format("{}={}", side, turn.clockwise));
    }
    if (turn.mirrored) {
      add("turn", fmt::format("{}=mirror", side));
    }
  };
  add("preset", std::to_string(options.show.preset.value_or(1)));
  if (options.show.scans) {
    add("qr", wordFor(kOnOff, *options.show.scans));
  }
  if (options.show.camera) {
    add("camera", *options.show.camera);
  }
  addCamera("back", options.sources.back, options.sources.backTurn);
  addCamera("front", options.sources.front, options.sources.frontTurn);
  if (options.accelerometerScript) {
    add("accelerometer", std::string(kScript) + absolute(*options.accelerometerScript));
  }
  if (!options.machine.empty()) {
    add("machine", options.machine);
  }
  if (!options.surface.output.empty()) {
    add("output", options.surface.output);
  }
  if (options.surface.layer != standard.surface.layer) {
    add("layer", wordFor(kLayers, options.surface.layer));
  }
  if (options.surface.pause != standard.surface.pause) {
    add("pause", wordFor(kPauses, options.surface.pause));
  }
  if (options.onBattery != standard.onBattery) {
    add("on-battery", wordFor(kOnBattery, options.onBattery));
  }
  if (options.picturesPerSecond) {
    add("fps", std::to_string(*options.picturesPerSecond));
  }
  if (options.alerts != standard.alerts) {
    add("alerts", wordFor(kAlerts, options.alerts));
  }
  if (!options.bundle.empty()) {
    add("bundle", options.bundle.string());
  }
  return arguments;
}

}  // namespace nivlo
