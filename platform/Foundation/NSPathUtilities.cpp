#include "platform/Foundation/NSPathUtilities.hpp"

#include <cstdlib>

namespace nivlo {

namespace {

std::optional<std::filesystem::path> absolutePathFromEnvironment(const char* variable) {
  const char* value = std::getenv(variable);
  if (!value || !std::filesystem::path(value).is_absolute()) {
    return std::nullopt;
  }
  return value;
}

}  // namespace

std::optional<std::filesystem::path> userLibraryDirectory() {
  if (const auto state = absolutePathFromEnvironment("XDG_STATE_HOME")) {
    return *state / "nivlo";
  }
  if (const auto home = absolutePathFromEnvironment("HOME")) {
    return *home / ".local/state/nivlo";
  }
  return std::nullopt;
}

}  // namespace nivlo
