// The cameras of a real PipeWire daemon, and the order in which they are offered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "linux/camera/selection/SelectedCameras.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/support/PrivatePipeWire.hpp"
#include "tests/support/VirtualCamera.hpp"

namespace nivlo::test {
namespace {

using enum AVCaptureDevicePosition;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;

auto isCamera(const char* id, AVCaptureDevicePosition position, const PictureTurn& turn) {
  return AllOf(Field(&CameraInfo::uniqueID, id), Field(&CameraInfo::position, position),
               Field(&CameraInfo::turn, turn));
}

TEST(SelectedCameras, AGreyCameraComesLastAndTheOthersHaveASideAndItsTurnEach) {
  PrivateBus bus;
  const ScopedEnvironment environment{bus.environment()};
  const LoggingMachine machine;
  const PrivatePipeWire pipewire(bus);
  const VirtualCamera grey(bus.environment(), {"a-grey", {"--location", "back", "--format", "Grey"}});
  const VirtualCamera mixed(bus.environment(), {"b", {"--format", "Grey", "--also", "YUY2:320x240@30"}});
  const VirtualCamera other(bus.environment(), {"c", {}});
  std::string error;
  const auto cameras =
      makeSelectedCameras({.backTurn = {.clockwise = 90}, .frontTurn = {.mirrored = true}}, &error);
  EXPECT_THAT(cameras->cameras(), ElementsAre(isCamera("pipewire:b", Back, {.clockwise = 90}),
                                              isCamera("pipewire:c", Front, {.mirrored = true}),
                                              isCamera("pipewire:a-grey", Unspecified, {.clockwise = 90})));
}

}  // namespace
}  // namespace nivlo::test
