#include "tests/support/desktop/VirtualInput.hpp"

#include <stdexcept>

namespace nivlo::test {

VirtualInput::VirtualInput(const HeadlessSway& sway)
    : process_({NIVLO_TEST_INPUT, std::to_string(sway.size().width), std::to_string(sway.size().height)},
               sway.environment()) {
  send("");
}

void VirtualInput::click(int x, int y) {
  send("move " + std::to_string(x) + ' ' + std::to_string(y));
  send("click");
}

void VirtualInput::clickLowestLine(const WindowPlace& window, double part) {
  constexpr int kHalfALine = 20;
  click(window.x + static_cast<int>(window.width * part), window.y + window.height - kHalfALine);
}

void VirtualInput::key(int code) { send("key " + std::to_string(code)); }

void VirtualInput::send(const std::string& command) {
  const bool sent = command.empty() || process_.write(command + '\n');
  if (!sent || !process_.waitForLine("ok ")) {
    throw std::runtime_error("no virtual input: " + process_.output());
  }
}

}  // namespace nivlo::test
