#include "tests/support/PrivatePipeWire.hpp"

#include <filesystem>
#include <fstream>

namespace nivlo::test {
namespace {

/// WirePlumber 0.4 looks after Bluetooth only where there is /run/systemd, and ends where there is none, as
/// in many containers. Later versions ignore this file, and do without logind by themselves.
void leaveOutBluetooth(const std::filesystem::path& configuration) {
  const auto directory = configuration / "wireplumber" / "bluetooth.lua.d";
  std::filesystem::create_directories(directory);
  std::ofstream(directory / "80-left-out.lua") << "bluez_monitor.enabled = false\n";
}

/// The session manager publishes this metadata once its policies are in place.
bool sessionManagerIsReady(const Environment& environment) {
  ChildProcess list({"pw-cli", "ls", "Metadata"}, environment);
  return list.waitForLine("metadata.name = \"default\"").has_value();
}

}  // namespace

PrivatePipeWire::PrivatePipeWire(PrivateBus& bus) : bus_(bus) {
  leaveOutBluetooth(bus.configDirectory());
  startDaemon();
}

void PrivatePipeWire::startDaemon() {
  const std::filesystem::path socket = bus_.runtimeDirectory() / "pipewire-0";
  std::filesystem::remove(socket);
  pipewire_ = std::make_unique<ChildProcess>(std::vector<std::string>{"pipewire"}, environment());
  pipewire_->expectReady([&] { return std::filesystem::exists(socket); });
  sessionManager_ = std::make_unique<ChildProcess>(std::vector<std::string>{"wireplumber"}, environment());
  sessionManager_->expectReady([&] { return sessionManagerIsReady(environment()); });
}

void PrivatePipeWire::stopDaemon() {
  sessionManager_.reset();
  pipewire_.reset();
}

}  // namespace nivlo::test
