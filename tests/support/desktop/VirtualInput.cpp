#include "tests/support/desktop/VirtualInput.hpp"

#include <string>

namespace nivlo::test {

VirtualInput::VirtualInput(const HeadlessSway& sway)
    : process_({NIVLO_TEST_INPUT, std::to_string(sway.size().width), std::to_string(sway.size().height)},
               sway.environment()) {
  send("");
}

void VirtualInput::click(int x, int y) {
  send("move " + std::to_string(x) + ' ' + std::to_string(y) + '\n');
  send("click\n");
}

void VirtualInput::clickBottomRow(const WindowPlace& window, double part) {
  // libadwaita draws the buttons of a dialog up to 44 pixels from its lower edge, and since 1.5 from 24
  // to 68.
  constexpr int kInButtons = 34;
  click(window.x + static_cast<int>(window.width * part), window.y + window.height - kInButtons);
}

void VirtualInput::key(int code) { send("key " + std::to_string(code) + '\n'); }

void VirtualInput::send(const std::string& command) {
  process_.write(command);
  process_.expectLine("ok ");
}

}  // namespace nivlo::test
