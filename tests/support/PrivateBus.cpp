#include "tests/support/PrivateBus.hpp"

namespace nivlo::test {

PrivateBus::PrivateBus() {
  for (const char* name : {"run", "config", "data", "state", "cache"}) {
    std::filesystem::create_directory(directory_.path() / name);
    std::filesystem::permissions(directory_.path() / name, std::filesystem::perms::owner_all);
  }
  startDaemon();
}

Environment PrivateBus::environment() const {
  return {
      {"XDG_RUNTIME_DIR", runtimeDirectory()},
      {"XDG_CONFIG_HOME", configDirectory()},
      {"XDG_DATA_HOME", dataDirectory()},
      {"XDG_STATE_HOME", directory_.path() / "state"},
      {"XDG_CACHE_HOME", directory_.path() / "cache"},
      {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (runtimeDirectory() / "bus").string()},
      {"PIPEWIRE_RUNTIME_DIR", std::nullopt},
      {"PIPEWIRE_REMOTE", std::nullopt},
      {"DISPLAY", std::nullopt},
      {"WAYLAND_DISPLAY", std::nullopt},
  };
}

void PrivateBus::startDaemon() {
  std::filesystem::remove(runtimeDirectory() / "bus");
  const std::string address = "unix:path=" + (runtimeDirectory() / "bus").string();
  daemon_ =
      std::make_unique<ChildProcess>(std::vector<std::string>{"dbus-daemon", "--session", "--nofork",
                                                              "--print-address", "--address=" + address},
                                     environment());
  daemon_->expectLine("unix:path=");
}

void PrivateBus::stopDaemon() { daemon_.reset(); }

}  // namespace nivlo::test
