#include "host/service/ProgramToStart.hpp"

#include <system_error>

#include <glib.h>

#include "linux/handles/Owned.hpp"
#include "linux/program/ProgramFile.hpp"

namespace nivlo {

namespace {

constexpr auto kProgram = "nivlo";
constexpr auto kBundle = "NivloWallpaper.bundle";

/// A build folder has the wallpaper beside the program, an installation has it among its libraries.
/// Links are followed, because people link a program that they built into their PATH.
bool isInstalled(const std::filesystem::path& program) {
  std::error_code unusable;
  const auto folder = std::filesystem::canonical(program, unusable).parent_path();
  return !unusable && !std::filesystem::exists(folder / kBundle, unusable) &&
         std::filesystem::exists(folder / installedLibraries() / kBundle, unusable);
}

}  // namespace

ProgramToStart programToStart() {
  const auto running = std::filesystem::read_symlink("/proc/self/exe");
  if (isInstalled(running)) {
    return {running, true};
  }
  const Owned<gchar, g_free> onPath(g_find_program_in_path(kProgram));
  if (onPath && isInstalled(onPath.get())) {
    return {std::filesystem::absolute(onPath.get()), true};
  }
  const auto inPrefix = std::filesystem::path(NIVLO_PREFIX) / "bin" / kProgram;
  return isInstalled(inPrefix) ? ProgramToStart{inPrefix, true} : ProgramToStart{running, false};
}

}  // namespace nivlo
