// A hand on the mouse and the keyboard of a headless desktop.
#pragma once

#include "tests/support/ChildProcess.hpp"
#include "tests/support/desktop/HeadlessSway.hpp"

namespace nivlo::test {

/// Holds a pointer and a keyboard while it lives; a seat without them takes no input at all. Each call
/// returns when the compositor has taken the input, and throws std::runtime_error when it is gone.
class VirtualInput {
 public:
  explicit VirtualInput(const HeadlessSway& sway);

  /// Clicks with the left button at a place of the whole desktop, in logical pixels.
  void click(int x, int y);

  /// Clicks on the lowest line of a window, where a dialog has its buttons, at this part of its width.
  void clickLowestLine(const WindowPlace& window, double part);

  /// Presses a key of linux/input-event-codes.h, for example KEY_ESC, on a keyboard with the US layout.
  void key(int code);

 private:
  void send(const std::string& command);

  ChildProcess process_;
};

}  // namespace nivlo::test
