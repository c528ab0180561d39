// A desktop of the test's own: sway without a screen.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/PrivateBus.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// In logical pixels.
struct DesktopSize {
  int width = 0;
  int height = 0;
};

/// A window on the desktop, in logical pixels of all of it.
struct WindowPlace {
  long id = 0;  ///< what sway's criteria call con_id
  std::string application;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const WindowPlace&) const = default;
};

/// Runs sway in a private bus's session, from construction on. Its outputs are HEADLESS-1, HEADLESS-2 ...
/// from left to right. Throws std::runtime_error, with what sway said, when it does not come up.
class HeadlessSway {
 public:
  /// The bus must outlive it. A killed sway can be followed by another one in the same session.
  explicit HeadlessSway(PrivateBus& bus, std::vector<DesktopSize> outputs = {{1280, 720}});
  ~HeadlessSway();

  /// What makes a child a client: the bus's environment, the display, and a toolkit that draws in software.
  Environment environment() const;

  /// The size of all outputs together.
  DesktopSize size() const;

  /// Runs a command of sway(5), for example "create_output" or "[title=foreign] fullscreen enable". Throws
  /// std::runtime_error with sway's words when it fails.
  void message(const std::string& command) const;

  /// The window that takes the keyboard's input, if any does.
  std::optional<WindowPlace> focusedWindow() const;

  /// What is on an output now. The picture also stays behind as NAME.png in the directory of
  /// NIVLO_TEST_OUTPUT, by default test-output/ in the build directory. Throws std::runtime_error when there
  /// is no such output.
  Picture screenshot(const std::string& output, const std::string& name) const;

  pid_t pid() const { return process_->pid(); }

  /// Ends it at once, as a crash would.
  void kill();

 private:
  PrivateBus& bus_;
  std::vector<DesktopSize> outputs_;
  TemporaryDirectory directory_;
  std::string display_;
  std::unique_ptr<ChildProcess> process_;
};

}  // namespace nivlo::test
