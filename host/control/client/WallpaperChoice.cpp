#include "host/control/client/WallpaperChoice.hpp"

#include <fmt/format.h>
#include <glib.h>

#include "host/bundle/BundleLoader.hpp"
#include "host/control/client/ControlClient.hpp"
#include "host/service/InstalledService.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

WallpaperChoice shownWallpaper() {
  const auto status = ControlClient().call("GetStatus");
  return {.bundle = status.text("bundle"), .preset = status.number("preset")};
}

std::string chooseWallpaper(const WallpaperChoice& choice) {
  const Owned<gchar, g_free> path(g_utf8_make_valid(choice.bundle.c_str(), -1));
  const auto answer = ControlClient().call("SetWallpaper", g_variant_new("(si)", path.get(), choice.preset));
  if (answer.outcome == ControlClient::Outcome::Refused) {
    return answer.error;
  }
  // Nivlo's own wallpaper is started without its path, which moves when the program does.
  const bool own = choice.bundle == defaultBundlePath();
  const bool remembered = rememberWallpaper(own ? "" : choice.bundle.string(), choice.preset);
  if (answer.outcome == ControlClient::Outcome::Done) {
    return "";
  }
  return remembered
             ? "Nivlo is not running; it will show this when the desktop starts it"
             : fmt::format("Nivlo is not running; start it with 'nivlo{} --preset {}'",
                           own ? "" : fmt::format(" --bundle {}", choice.bundle.string()), choice.preset);
}

}  // namespace nivlo
