#include "tests/support/desktop/HeadlessWeston.hpp"

#include <stdexcept>

#include "tests/support/desktop/Toolkit.hpp"

namespace nivlo::test {
namespace {

constexpr auto kDisplay = "weston-headless";

}  // namespace

HeadlessWeston::HeadlessWeston(PrivateBus& bus)
    : bus_(bus),
      process_({"weston", "--backend=headless-backend.so", "--use-pixman", "--no-config", "--width=1280",
                "--height=720", std::string("--socket=") + kDisplay},
               bus.environment()) {
  const auto socket = bus.runtimeDirectory() / kDisplay;
  if (!waitFor([&] { return std::filesystem::exists(socket) || !process_.isRunning(); }) ||
      !process_.isRunning()) {
    throw std::runtime_error("weston does not start: " + process_.output());
  }
}

Environment HeadlessWeston::environment() const {
  return merged(bus_.environment(), softwareToolkit(kDisplay));
}

}  // namespace nivlo::test
