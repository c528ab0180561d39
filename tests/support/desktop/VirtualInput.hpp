// Mouse and keyboard input on a headless desktop.
#pragma once

#include <string>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/desktop/HeadlessSway.hpp"

namespace nivlo::test {

/// Plugs a virtual pointer and keyboard into the compositor's seat, which takes no input without them. Each
/// call returns once the compositor has processed the input and throws std::runtime_error if it is gone.
class VirtualInput {
 public:
  explicit VirtualInput(const HeadlessSway& sway);

  /// Clicks the left button at a place on the whole desktop, in logical pixels.
  void click(int x, int y);

  /// Clicks on the bottom row of a window, where a dialog has its buttons. `part` is the place across its
  /// width, from 0 (left) to 1 (right).
  void clickBottomRow(const WindowPlace& window, double part);

  /// Presses and releases a key of linux/input-event-codes.h, for example KEY_ESC, on a keyboard with the US
  /// layout.
  void key(int code);

 private:
  void send(const std::string& command);

  ChildProcess process_;
};

}  // namespace nivlo::test
