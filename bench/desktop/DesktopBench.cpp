// Measures the CPU time, delay and memory of the wallpaper beside other programs that show the same pictures.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <linux/input-event-codes.h>
#include <nlohmann/json.hpp>

#include "bench/desktop/Floor.hpp"
#include "bench/desktop/ProcessFigures.hpp"
#include "host/render/PictureConverter.hpp"
#include "tests/support/PrivatePipeWire.hpp"
#include "tests/support/ProcessTree.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/VirtualCamera.hpp"
#include "tests/support/desktop/ForeignWindow.hpp"
#include "tests/support/desktop/HeadlessSway.hpp"
#include "tests/support/desktop/VirtualInput.hpp"
#include "tests/support/pictures/Encoding.hpp"

namespace nivlo::bench {

namespace {

using std::chrono::duration;
using std::chrono::steady_clock;
using test::ChildProcess;
using test::Environment;
using test::merged;
using test::waitFor;
using Seconds = duration<double>;

constexpr int kRuns = 5;
constexpr double kFramesPerSecond = 30;
constexpr int kWidth = 1280;
constexpr int kHeight = 720;

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values.at(values.size() / 2);
}

void wait(Seconds time) { std::this_thread::sleep_for(time); }

/// A program that shows the pictures on a display, and how to start it.
struct Player {
  std::string name;
  std::vector<std::string> command;
};

/// A display server and the programs to compare on it.
struct Display {
  std::string name;
  Environment environment;
  pid_t server;  ///< its process
  std::vector<Player> players;
};

struct Cost {
  double client = 0;  ///< CPU seconds for 1000 frames
  double server = 0;  ///< CPU seconds for 1000 frames
};

/// Empty if the program is not installed or ends early.
std::optional<Cost> measureOnce(const Display& display, const Player& player) {
  constexpr Seconds kWarmUp{2};
  constexpr Seconds kMeasured{8};
  ChildProcess client(player.command, display.environment);
  wait(kWarmUp);
  const double clientBefore = cpuSeconds(client.pid());
  const double serverBefore = cpuSeconds(display.server);
  const auto start = steady_clock::now();
  wait(kMeasured);
  const double frames = Seconds(steady_clock::now() - start).count() * kFramesPerSecond;
  const Cost cost{(cpuSeconds(client.pid()) - clientBefore) * 1000 / frames,
                  (cpuSeconds(display.server) - serverBefore) * 1000 / frames};
  return client.isRunning() ? std::optional(cost) : std::nullopt;
}

/// The programs take turns, so that other load on the machine affects all of them alike.
void printCosts(const Display& display) {
  std::vector<std::array<std::vector<double>, 2>> figures(display.players.size());
  for (int run = 0; run < kRuns; ++run) {
    for (std::size_t i = 0; i < display.players.size(); ++i) {
      if (const auto cost = measureOnce(display, display.players[i])) {
        figures[i][0].push_back(cost->client);
        figures[i][1].push_back(cost->server);
      }
    }
  }
  std::cout << fmt::format("\n{}: CPU seconds for 1000 frames, medians of {}\n{:34} {:>8} {:>8} {:>8}\n",
                           display.name, kRuns, "", "client", "server", "both");
  for (std::size_t i = 0; i < display.players.size(); ++i) {
    if (figures[i][0].size() < kRuns) {
      std::cout << fmt::format("{:34} not measured: not installed, or ended early\n",
                               display.players[i].name);
      continue;
    }
    const double client = median(figures[i][0]);
    const double server = median(figures[i][1]);
    std::cout << fmt::format("{:34} {:8.2f} {:8.2f} {:8.2f}\n", display.players[i].name, client, server,
                             client + server);
  }
}

/// Takes the frames from enough buffers that they are not in the processor's cache, as a camera's are not.
void printConversion(const test::EncodedPicture& encoded) {
  constexpr int kFrames = 24;
  std::vector<std::vector<std::uint8_t>> frames(kFrames, encoded.bytes);
  std::vector<Pixels> targets(3);
  for (auto& target : targets) {
    target.resize(kWidth, kHeight);
  }
  PictureConverter converter;
  std::vector<double> runs;
  for (int run = 0; run < kRuns; ++run) {
    const auto start = std::clock();
    constexpr int kConversions = 500;
    for (int i = 0; i < kConversions; ++i) {
      auto frame = std::make_shared<VideoFrame>();
      frame->format = PixelFormat::NV12;
      frame->width = kWidth;
      frame->height = kHeight;
      const auto* luma = frames[static_cast<std::size_t>(i) % kFrames].data();
      frame->planes[0] = {luma, encoded.stride};
      frame->planes[1] = {luma + encoded.stride * kHeight, encoded.stride};
      converter.convert({frame, pictureGeometry(*frame)}, targets[static_cast<std::size_t>(i) % 3].span());
    }
    runs.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC * 1000 / kConversions);
  }
  std::cout << fmt::format("\nConversion alone, NV12 to pixels: {:.2f} CPU seconds for 1000 frames\n",
                           median(runs));
}

/// The program, running with these arguments on the display.
class Wallpaper {
 public:
  Wallpaper(const Display& display, std::vector<std::string> arguments) : environment_(display.environment) {
    arguments.insert(arguments.begin(), NIVLO_PROGRAM);
    start_ = steady_clock::now();
    process_.emplace(std::move(arguments), environment_);
  }

  pid_t pid() const { return process_->pid(); }
  ChildProcess& process() { return *process_; }
  /// Seconds from the start of the program to this line of its output. Throws std::runtime_error if it does
  /// not come.
  double secondsTo(std::string_view line) {
    if (!process_->waitForLine(line)) {
      throw std::runtime_error(fmt::format("nivlo did not print \"{}\" but: {}", line, process_->output()));
    }
    return Seconds(steady_clock::now() - start_).count();
  }
  std::string ctl(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {NIVLO_PROGRAM, "ctl"});
    ChildProcess process(std::move(arguments), environment_);
    process.waitForExit();
    return process.output();
  }

 private:
  Environment environment_;
  steady_clock::time_point start_;
  std::optional<ChildProcess> process_;
};

void printTimes(const Display& display) {
  std::vector<double> starts;
  for (int run = 0; run < kRuns; ++run) {
    starts.push_back(Wallpaper(display, {"--qr", "off"}).secondsTo("first picture"));
  }
  Wallpaper wallpaper(display, {"--qr", "off"});
  wait(Seconds(12));
  std::cout << fmt::format("\n{}: start to first picture {:.0f} ms (median of {})\n{}", display.name,
                           median(starts) * 1000, kRuns, wallpaper.ctl({"status"}));
}

void printHidden(const Display& display, const std::function<std::unique_ptr<test::ForeignWindow>()>& cover) {
  Wallpaper wallpaper(display, {"--qr", "off"});
  wallpaper.secondsTo("first picture");
  {
    const auto covered = steady_clock::now();
    const auto window = cover();
    wallpaper.secondsTo("closed");
    std::cout << fmt::format("\n{}: camera closed {:.0f} ms after a covering window was requested\n",
                             display.name, Seconds(steady_clock::now() - covered).count() * 1000);
    const double before = cpuSeconds(wallpaper.pid());
    wait(Seconds(30));
    std::cout << fmt::format("CPU seconds in 30 s while hidden: {:.2f}\n",
                             cpuSeconds(wallpaper.pid()) - before);
  }
  const auto uncovered = steady_clock::now();
  wallpaper.secondsTo("opened");
  std::cout << fmt::format("camera opened {:.0f} ms after the window was closed\n",
                           Seconds(steady_clock::now() - uncovered).count() * 1000);
}

bool waitForDialog(const test::HeadlessSway& sway, bool open,
                   std::chrono::seconds patience = std::chrono::seconds(3)) {
  return waitFor([&] { return sway.focusedWindow().has_value() == open; }, patience);
}

/// Dismisses the dialog that is open or opens within three seconds. Returns whether there was one.
bool dismissDialog(const test::HeadlessSway& sway, test::VirtualInput& input) {
  const bool shown = waitForDialog(sway, true);
  if (shown) {
    input.key(KEY_ESC);
    waitForDialog(sway, false);
  }
  return shown;
}

/// The private memory of the wallpaper before a dialog, of all its processes for windows with one, and of the
/// wallpaper after the answer; and the time from allowing scanning to a window with the keyboard focus.
void printDialog(const Display& display, const test::HeadlessSway& sway) {
  test::VirtualCamera code(
      display.environment,
      {"code", {"--location", "back", "--size", "1280x720", "--picture", NIVLO_DEMO_PICTURE}});
  test::VirtualInput input(sway);
  const Display usual{
      display.name, merged(display.environment, {{"GSK_RENDERER", std::nullopt}}), display.server, {}};
  std::array<std::vector<double>, 5> figures;
  for (int run = 0; run < kRuns; ++run) {
    Wallpaper wallpaper(usual, {"--qr", "off", "--source", "back=pipewire:code"});
    wallpaper.secondsTo("first picture");
    wait(Seconds(1));
    figures[0].push_back(privateMegabytes(wallpaper.pid()));
    const auto asked = steady_clock::now();
    wallpaper.ctl({"scan", "on"});
    if (!waitForDialog(sway, true, std::chrono::seconds(20))) {
      throw std::runtime_error("no dialog opened: " + wallpaper.process().output());
    }
    figures[1].push_back(Seconds(steady_clock::now() - asked).count() * 1000);
    wait(Seconds(1));
    const auto dialogs = test::childNamed(wallpaper.pid(), "nivlo-dialogs");
    figures[2].push_back(dialogs == 0 ? 0 : privateMegabytes(dialogs));
    figures[3].push_back(privateMegabytes(wallpaper.pid()));
    input.key(KEY_ESC);
    waitForDialog(sway, false);
    wait(Seconds(1));
    figures[4].push_back(privateMegabytes(wallpaper.pid()));
  }
  std::cout << fmt::format(
      "\nPrivate memory, medians of {}: {:.1f} MB before a dialog, {:.1f} MB and {:.1f} MB in nivlo-dialogs "
      "with "
      "one, {:.1f} MB after the answer\nDialog on the screen {:.0f} ms after scanning was turned on\n",
      kRuns, median(figures[0]), median(figures[3]), median(figures[2]), median(figures[4]),
      median(figures[1]));
}

/// Looks for leaks: runs many frames at a higher rate than any camera has, while cameras are swapped, the
/// wallpaper is paused and dialogs are dismissed.
void printGrowth(const Display& display, test::HeadlessSway& sway) {
  constexpr int kFrames = 20000;
  sway.message("output HEADLESS-1 mode --custom 640x360@240Hz");
  const auto camera = [&](const std::string& side, std::vector<std::string> more) {
    more.insert(more.end(), {"--location", side, "--fps", "240"});
    return test::VirtualCameraOptions{"fast-" + side, more};
  };
  test::VirtualCamera back(display.environment,
                           camera("back", {"--size", "640x360", "--picture", NIVLO_DEMO_PICTURE}));
  test::VirtualCamera front(display.environment, camera("front", {"--size", "320x240"}));
  test::VirtualInput input(sway);
  Wallpaper wallpaper(display,
                      {"--source", "back=pipewire:fast-back", "--source", "front=pipewire:fast-front"});
  wallpaper.secondsTo("first picture");
  const auto frames = [&] {
    const auto status = nlohmann::json::parse(wallpaper.ctl({"status", "--json"}), nullptr, false);
    return status.is_object() ? status.value("frames", 0) : 0;
  };
  double memory = 0;
  int descriptors = 0;
  int dialogs = 0;
  int rounds = 0;
  int shown = 0;
  while ((shown = frames()) < kFrames && wallpaper.process().isRunning()) {
    if (memory == 0 && shown > kFrames / 5) {
      memory = residentMegabytes(wallpaper.pid());
      descriptors = openDescriptors(wallpaper.pid());
    }
    dialogs += dismissDialog(sway, input) ? 1 : 0;
    wallpaper.ctl({"swap"});
    wait(Seconds(1.2));  // long enough for the code to count as out of view
    wallpaper.ctl({"pause"});
    wallpaper.ctl({"resume"});
    wallpaper.ctl({"swap"});
    ++rounds;
  }
  std::cout << fmt::format(
      "\n{} frames with {} dialogs, {} swaps and {} pauses: memory {:.1f} MB after a fifth of them and "
      "{:.1f} MB at the end, descriptors {} and {}\n",
      shown, dialogs, 2 * rounds, rounds, memory, residentMegabytes(wallpaper.pid()), descriptors,
      openDescriptors(wallpaper.pid()));
}

/// Files of raw NV12: one picture, for programs that can read a file again and again, and a film of it for
/// the others.
struct RawFiles {
  std::string picture;
  std::string film;
};

RawFiles writeRawFiles(const std::filesystem::path& directory, const test::EncodedPicture& encoded) {
  constexpr int kFilmFrames = 360;
  const RawFiles files{directory / "picture.nv12", directory / "film.nv12"};
  const auto write = [&](const std::string& path, int frames) {
    std::ofstream file(path, std::ios::binary);
    for (int i = 0; i < frames; ++i) {
      file.write(reinterpret_cast<const char*>(encoded.bytes.data()),
                 static_cast<std::streamsize>(encoded.bytes.size()));
    }
  };
  write(files.picture, 1);
  write(files.film, kFilmFrames);
  return files;
}

Player mpv(const RawFiles& files, const std::string& output) {
  return {"mpv --vo=" + output,
          {"mpv", "--no-config", "--no-terminal", "--no-audio", "--no-osc", "--fs", "--panscan=1",
           "--vo=" + output, "--loop-file=inf", "--demuxer=rawvideo", "--demuxer-rawvideo-w=1280",
           "--demuxer-rawvideo-h=720", "--demuxer-rawvideo-mp-format=nv12", "--demuxer-rawvideo-fps=30",
           files.film}};
}

Player gstreamer(const RawFiles& files, const std::string& name, const std::string& sink) {
  return {name,
          {"sh", "-c",
           "exec gst-launch-1.0 -q multifilesrc location=" + files.picture +
               " loop=true ! rawvideoparse format=nv12 width=1280 height=720 framerate=30/1 ! " + sink}};
}

Player nivlo(const std::string& surface) {
  return {"nivlo", {NIVLO_PROGRAM, "--qr", "off", "--surface", surface}};
}

void measureWayland(const Environment& session, test::HeadlessSway& sway, const RawFiles& files) {
  const Display display{
      "Wayland (sway)",
      merged(session, sway.environment()),
      sway.pid(),
      {{"floor: recommitting one picture", {"/proc/self/exe", "--floor"}},
       nivlo("wayland"),
       mpv(files, "wlshm"),
       gstreamer(files, "gst, scaled in the client",
                 "videoconvertscale ! video/x-raw,width=1920,height=1080 ! waylandsink"),
       gstreamer(files, "gst, scaled by the compositor", "videoconvertscale ! waylandsink")}};
  printCosts(display);
  printTimes(display);
  printDialog(display, sway);
  printHidden(display, [&] {
    auto window = std::make_unique<test::ForeignWindow>(display.environment);
    waitFor([&] { return sway.focusedWindow().has_value(); });
    sway.message("fullscreen enable");
    return window;
  });
  printGrowth(display, sway);
}

void measureX11(const Environment& session, const RawFiles& files) {
  ChildProcess server(
      {"Xvfb", "-displayfd", "1", "-screen", "0", "1920x1080x24", "-nolisten", "tcp", "-noreset"});
  waitFor([&] { return server.standardOutput().ends_with('\n'); });
  const auto number = server.standardOutput();
  const Display display{"X11 (Xvfb)",
                        merged(session, {{"DISPLAY", ":" + number.substr(0, number.find('\n'))},
                                         {"WAYLAND_DISPLAY", std::nullopt}}),
                        server.pid(),
                        {nivlo("x11"), mpv(files, "x11"),
                         gstreamer(files, "gst ximagesink",
                                   "videoconvertscale ! video/x-raw,width=1920,height=1080 ! ximagesink")}};
  printCosts(display);
  printTimes(display);
}

/// Only what a dialog costs, on Wayland.
int runDialogs() {
  test::PrivateBus bus;
  test::PrivatePipeWire pipeWire(bus);
  test::HeadlessSway sway(bus, {{1920, 1080}});
  printDialog({"Wayland (sway)", merged(pipeWire.environment(), sway.environment()), sway.pid(), {}}, sway);
  return 0;
}

int run() {
  const test::TemporaryDirectory directory;
  const auto encoded =
      encode(test::quadrantPicture(kWidth, kHeight), {test::Mode::Format::NV12, kWidth, kHeight}, {}, 0);
  const auto files = writeRawFiles(directory.path(), encoded);
  test::PrivateBus bus;
  test::PrivatePipeWire pipeWire(bus);
  test::HeadlessSway sway(bus, {{1920, 1080}});
  test::VirtualCamera camera(pipeWire.environment(),
                             {"camera", {"--location", "back", "--format", "NV12", "--size", "1280x720"}});
  printConversion(encoded);
  measureX11(pipeWire.environment(), files);
  measureWayland(pipeWire.environment(), sway, files);
  return 0;
}

}  // namespace

}  // namespace nivlo::bench

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--floor") {
    return nivlo::bench::runFloor();
  }
  try {
    const bool dialogsOnly = argc == 2 && std::string_view(argv[1]) == "dialogs";
    return dialogsOnly ? nivlo::bench::runDialogs() : nivlo::bench::run();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
