// The log's words when there is no camera.
#include <gmock/gmock.h>

#include "linux/camera/selection/WhyNoCamera.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

TEST(WhyNoCamera, TheRemedyFitsTheCause) {
  const VideoDevice usable{"/dev/video2", true};
  const VideoDevice forbidden{"/dev/video0", false};
  EXPECT_THAT(whyNoCamera(false, {usable}).remedy, HasSubstr("start pipewire"));
  EXPECT_EQ(whyNoCamera(true, {}).cause, "PipeWire has no camera");
  const auto hidden = whyNoCamera(true, {forbidden, usable});
  EXPECT_EQ(hidden.cause, "PipeWire does not show /dev/video2");
  EXPECT_THAT(hidden.remedy, HasSubstr("restart wireplumber"));
  const auto denied = whyNoCamera(true, {forbidden});
  EXPECT_EQ(denied.cause, "you lack the permission to use /dev/video0");
  EXPECT_THAT(denied.remedy, HasSubstr("group video"));
}

TEST(WhyNoCamera, AFileThatIsNotACameraIsNotTakenForOne) {
  const TemporaryDirectory folder;
  folder.write("video0", "not a device");
  std::filesystem::create_symlink("/dev/null", folder.path() / "video1");
  EXPECT_THAT(videoDevices(folder.path()), IsEmpty());
  EXPECT_THAT(videoDevices(folder.path() / "none"), IsEmpty());
}

}  // namespace
}  // namespace nivlo::test
