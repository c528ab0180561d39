#include "tests/support/PrivatePipeWire.hpp"

namespace nivlo::test {
namespace {

/// The session manager publishes this metadata once its policies are in place.
bool sessionManagerIsReady(const Environment& environment) {
  ChildProcess list({"pw-cli", "ls", "Metadata"}, environment);
  return list.waitForLine("metadata.name = \"default\"").has_value();
}

}  // namespace

PrivatePipeWire::PrivatePipeWire(PrivateBus& bus) : bus_(bus) { startDaemon(); }

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
