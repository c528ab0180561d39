// A private desktop: sway without a screen.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/PrivateBus.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// Logical pixels.
struct DesktopSize {
  int width = 0;
  int height = 0;
};

/// A window and its place on the whole desktop, in logical pixels.
struct WindowPlace {
  long id = 0;  ///< what sway's criteria call con_id
  std::string application;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const WindowPlace&) const = default;
};

/// Runs sway in the session of a private bus for as long as this object lives. The outputs are HEADLESS-1,
/// HEADLESS-2 and so on, from left to right.
class HeadlessSway {
 public:
  /// The bus must outlive it. Another sway may be started in the same session after this one was killed.
  /// Throws std::runtime_error, with what sway printed, if it does not start.
  explicit HeadlessSway(PrivateBus& bus, std::vector<DesktopSize> outputs = {{1280, 720}});
  /// Runs as a client of another sway of the same bus, which must outlive it, with one output: WL-1. Its
  /// outputs are windows there, with the application "wlroots", and unplugged by killing those. Outputs
  /// without a window cannot be unplugged.
  HeadlessSway(PrivateBus& bus, const HeadlessSway& host);
  ~HeadlessSway();

  /// The environment that makes a child process a client: the bus, the display, and a toolkit that draws in
  /// software.
  Environment environment() const;

  /// The size of all outputs side by side.
  DesktopSize size() const;

  /// Runs a command of sway(5), for example "create_output" or "[title=foreign] fullscreen enable". Throws
  /// std::runtime_error, with sway's message, if it fails.
  void message(const std::string& command) const;

  /// The window with the keyboard focus, if any has it.
  std::optional<WindowPlace> focusedWindow() const;

  /// The picture that an output shows now. The picture is also kept as NAME.png in the directory that
  /// NIVLO_TEST_OUTPUT names, or in test-output/ in the build directory. Throws std::runtime_error if there
  /// is no such output.
  Picture screenshot(const std::string& output, const std::string& name) const;

  pid_t pid() const { return process_->pid(); }

  /// Kills sway, which ends as if it had crashed.
  void kill();

 private:
  void start(const Environment& backend);

  PrivateBus& bus_;
  std::vector<DesktopSize> outputs_;
  TemporaryDirectory directory_;
  std::string display_;
  std::unique_ptr<ChildProcess> process_;
};

}  // namespace nivlo::test
