#include "host/control/client/PresetChoice.hpp"

#include <fmt/format.h>

#include "host/control/client/ControlClient.hpp"
#include "host/service/InstalledService.hpp"

namespace nivlo {

int shownPreset() { return ControlClient().call("GetStatus").number("preset"); }

std::string choosePreset(int preset) {
  const auto answer = ControlClient().call("SetPreset", g_variant_new("(i)", preset));
  if (answer.outcome == ControlClient::Outcome::Refused) {
    return answer.error;
  }
  const bool remembered = rememberPreset(preset);
  if (answer.outcome == ControlClient::Outcome::Done) {
    return "";
  }
  return remembered ? "Nivlo is not running; it will show this preset when the desktop starts it"
                    : fmt::format("Nivlo is not running; start it with 'nivlo --preset {}'", preset);
}

}  // namespace nivlo
