#include "host/commands/CommandLine.hpp"

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/bundle/BundleLoader.hpp"
#include "host/commands/CtlArguments.hpp"

namespace nivlo {

namespace {

constexpr int kUsageError = 2;
constexpr int kLargestSide = 16384;

constexpr auto kMachineHelp =
    "The machine identifier to go by, for example iPhone4,1, in place of the kernel's";

constexpr auto kFooter = R"(Examples:
  nivlo                                   show the back camera, offer the codes it sees
  nivlo --preset 4                        the front camera, no codes
  nivlo --source back=file:photo.jpg      a picture in place of the back camera
  nivlo --surface offscreen --snapshot wall.png --frames 30
  nivlo scan *.png                        read the codes in pictures
  nivlo ctl pause                         close the camera of the running wallpaper
'nivlo COMMAND --help' tells more of a command. While nivlo runs, another start passes its preset, --qr and
--camera on to it. With the power saver profile, codes are looked for less often.
)";

const std::map<std::string, SurfaceKind> kSurfaces{{"auto", SurfaceKind::Auto},
                                                   {"wayland", SurfaceKind::Wayland},
                                                   {"x11", SurfaceKind::X11},
                                                   {"window", SurfaceKind::Window},
                                                   {"offscreen", SurfaceKind::Offscreen}};
const std::map<std::string, PausePolicy> kPauses{{"covered", PausePolicy::Covered},
                                                 {"fullscreen", PausePolicy::Fullscreen},
                                                 {"never", PausePolicy::Never}};

/// The options among them that take a value, each as "--name=value".
std::vector<std::string> given(const CLI::App& app) {
  std::vector<std::string> result;
  for (const auto* option : app.get_options()) {
    for (const auto& value :
         option->get_expected_max() > 0 ? option->results() : std::vector<std::string>()) {
      result.push_back(option->get_name() + "=" + value);
    }
  }
  return result;
}

const std::map<std::string, AlertKind> kAlerts{
    {"auto", AlertKind::Auto}, {"desktop", AlertKind::Desktop}, {"terminal", AlertKind::Terminal}};

/// What "run" and the program without a command share.
class RunArguments {
 public:
  void addTo(CLI::App& app) {
    addLastingTo(app);
    addPassingTo(app);
  }

  /// Those that make sense for a wallpaper that the desktop starts.
  void addLastingTo(CLI::App& app) {
    app.add_option("--preset", options_.show.preset,
                   "1: back camera, codes  2: front camera, codes  3: back camera  4: front camera")
        ->check(CLI::Range(1, 4))
        ->default_str("1");
    app.add_option("--qr", scans_, "Offer the codes that the camera sees; the preset says otherwise")
        ->check(CLI::IsMember({"on", "off"}));
    app.add_option("--camera", camera_, "The camera to begin with; the preset says otherwise")
        ->check(CLI::IsMember({"back", "front"}));
    app.add_option(
        "--source", sources_,
        "What stands at a side, SIDE=SOURCE: back or front = auto, demo, pipewire:NODE, file:PATH or none "
        "(auto: the PipeWire cameras, else the demo; see 'nivlo devices')");
    app.add_option("--accelerometer", accelerometer_,
                   "In place of the sensor: script:FILE plays readings from lines 'SECONDS, X, Y, Z' (in g); "
                   "above 1.5 g on an axis is a shake");
    app.add_option("--output", options_.surface.output,
                   "Only on this output, for example eDP-1; all of them otherwise");
    app.add_option(
           "--pause", pause_,
           "What hides the wallpaper, so that the camera is closed: covered (maximised and fullscreen "
           "windows), fullscreen, or never; each output counts for itself")
        ->check(CLI::IsMember({"covered", "fullscreen", "never"}))
        ->capture_default_str();
    app.add_option(
           "--alerts", alerts_,
           "How to ask: with the desktop's dialogs, or in the terminal with numbered buttons; auto is the "
           "desktop where the wallpaper is shown on one")
        ->check(CLI::IsMember({"auto", "desktop", "terminal"}))
        ->capture_default_str();
    app.add_option("--bundle", options_.bundle, "The wallpaper bundle to load in place of the built-in one");
  }

  void addPassingTo(CLI::App& app) {
    app.add_option("--surface", surface_,
                   "Where to draw: the desktop background (wayland, x11), an ordinary window, or offscreen, "
                   "into memory; auto is the desktop where there is one")
        ->check(CLI::IsMember({"auto", "wayland", "x11", "window", "offscreen"}))
        ->capture_default_str();
    app.add_option("--size", size_, "A window's or an offscreen surface's size in pixels, WIDTHxHEIGHT")
        ->capture_default_str();
    app.add_option("--snapshot", snapshot_,
                   "Write the first picture, and at the end the last one, to this PNG file");
    app.add_option("--frames", options_.frames, "End after so many drawn frames")->check(CLI::PositiveNumber);
    app.add_option("--seconds", seconds_, "End after this time")->check(CLI::PositiveNumber);
  }

  /// Throws CLI::ValidationError where a value makes no sense.
  RunOptions options() const {
    RunOptions result = options_;
    if (result.bundle.empty()) {
      result.bundle = defaultBundlePath();
    }
    if (!scans_.empty()) {
      result.show.scans = scans_ == "on";
    }
    if (!camera_.empty()) {
      result.show.camera = camera_;
    }
    if (!snapshot_.empty()) {
      result.snapshot = snapshot_;
    }
    if (seconds_ > 0) {
      result.runFor = std::chrono::duration<double>(seconds_);
    }
    result.surfaceKind = kSurfaces.at(surface_);
    result.surface.pause = kPauses.at(pause_);
    result.alerts = kAlerts.at(alerts_);
    result.sources = parseSources(sources_);
    readSize(result);
    readAccelerometer(result);
    return result;
  }

  static CameraSources parseSources(const std::vector<std::string>& texts) {
    CameraSources sources;
    for (const auto& text : texts) {
      if (const auto error = applyCameraSource(text, &sources); !error.empty()) {
        throw CLI::ValidationError("--source", error);
      }
    }
    return sources;
  }

 private:
  void readSize(RunOptions& result) const {
    char extra = 0;
    const int count =
        std::sscanf(size_.c_str(), "%5dx%5d%c", &result.surface.width, &result.surface.height, &extra);
    const auto fits = [](int side) { return side >= 1 && side <= kLargestSide; };
    if (count != 2 || !fits(result.surface.width) || !fits(result.surface.height)) {
      throw CLI::ValidationError("--size",
                                 "write WIDTHxHEIGHT in pixels, for example 1920x1080, each from 1 to 16384");
    }
  }

  void readAccelerometer(RunOptions& result) const {
    const std::string prefix = "script:";
    if (accelerometer_.empty()) {
      return;
    }
    if (!accelerometer_.starts_with(prefix) || accelerometer_.size() == prefix.size()) {
      throw CLI::ValidationError("--accelerometer", "write script:FILE");
    }
    result.accelerometerScript = accelerometer_.substr(prefix.size());
  }

  RunOptions options_;
  std::string scans_;
  std::string camera_;
  std::vector<std::string> sources_;
  std::string accelerometer_;
  std::string surface_ = "auto";
  std::string pause_ = "covered";
  std::string alerts_ = "auto";
  std::string size_ = "1920x1080";
  std::string snapshot_;
  double seconds_ = 0;
};

/// What "install-service" takes: how it is done, and how the program is to be run.
class InstallServiceArguments {
 public:
  explicit InstallServiceArguments(CLI::App& app)
      : command_(app.add_subcommand("install-service", "Have the desktop start nivlo with these options")) {
    run_.addLastingTo(*command_);
    auto* print = command_->add_flag("--print", options_.print, "Only print what would be installed");
    command_->add_flag("--remove", options_.remove, "Undo the installation")->excludes(print);
    command_->footer(
        "Installed is a systemd user unit where systemd runs the graphical session, else an autostart "
        "entry;\n"
        "running it again replaces what was installed.");
  }

  bool chosen() const { return command_->parsed(); }
  /// Throws CLI::ValidationError where a value makes no sense.
  InstallServiceOptions options() const {
    auto result = options_;
    result.preset = run_.options().show.preset.value_or(1);
    result.arguments = given(*command_);
    std::erase_if(result.arguments,
                  [](const std::string& argument) { return argument.starts_with("--preset="); });
    return result;
  }

 private:
  CLI::App* command_;
  RunArguments run_;
  InstallServiceOptions options_;
};

}  // namespace

Command parseCommandLine(int argc, const char* const* argv) {
  CLI::App app(
      "The desktop background becomes the live picture of a camera. Codes that it sees are offered to be "
      "opened or "
      "copied, and a shake turns the camera round.",
      "nivlo");
  app.footer(kFooter);
  app.set_version_flag("--version", NIVLO_VERSION);
  app.require_subcommand(0, 1);

  RunArguments run;
  run.addTo(app);
  auto* runCommand = app.add_subcommand("run", "Show the wallpaper (what happens without a command, too)");
  run.addTo(*runCommand);

  PresetsOptions presets;
  auto* presetsCommand = app.add_subcommand("presets", "List the four presets and what they do");
  presetsCommand->add_flag("--json", presets.json,
                           "One JSON array: of each preset its number, its options and a description");
  presetsCommand->add_option("--bundle", presets.bundle,
                             "The wallpaper bundle to ask in place of the built-in one");

  PickOptions pick;
  auto* pickCommand = app.add_subcommand(
      "pick",
      "Choose a preset by its picture; the running nivlo shows it, and the one that the desktop starts");
  pickCommand->add_option("--bundle", pick.bundle, "The wallpaper bundle whose presets to choose from");

  std::vector<std::string> deviceSources;
  DevicesOptions devices;
  auto* devicesCommand =
      app.add_subcommand("devices", "List the cameras that can be chosen, and what machine this is");
  devicesCommand->add_option("--source", deviceSources, "As for 'run'");
  devicesCommand->add_option("--machine", devices.machine, kMachineHelp);

  ChimeOptions chime;
  auto* chimeCommand = app.add_subcommand("chime", "Play the chime, to hear that sound works");
  chimeCommand->add_option("--bundle", chime.bundle, "The wallpaper bundle whose chime to play");

  ScanOptions scan;
  auto* scanCommand = app.add_subcommand("scan", "Read the codes in picture files, as a live camera would");
  scanCommand->add_option("FILE", scan.files, "PNG, JPEG or WebP")->required();
  scanCommand->add_flag("--json", scan.json,
                        "One JSON object a file: file, codes [{type, text, corners}], milliseconds, error");
  scanCommand->footer(
      "A line a code: type, text; with 'FILE: ' before it for several files.\n"
      "Exit status: 0 all files were read, 1 one could not be read, 2 wrong usage.");

  const CtlArguments ctl(app);
  const InstallServiceArguments install(app);
  try {
    app.parse(argc, argv);
    if (*scanCommand) {
      return scan;
    }
    if (ctl.chosen()) {
      return ctl.options();
    }
    if (install.chosen()) {
      return install.options();
    }
    if (*presetsCommand) {
      if (presets.bundle.empty()) {
        presets.bundle = defaultBundlePath();
      }
      return presets;
    }
    if (*pickCommand) {
      if (pick.bundle.empty()) {
        pick.bundle = defaultBundlePath();
      }
      return pick;
    }
    if (*devicesCommand) {
      devices.sources = RunArguments::parseSources(deviceSources);
      return devices;
    }
    if (*chimeCommand) {
      if (chime.bundle.empty()) {
        chime.bundle = defaultBundlePath();
      }
      return chime;
    }
    auto options = run.options();
    options.given = given(*runCommand ? *runCommand : app);
    return options;
  } catch (const CLI::ParseError& error) {
    return ExitNow{app.exit(error) == 0 ? 0 : kUsageError};
  }
}

}  // namespace nivlo
