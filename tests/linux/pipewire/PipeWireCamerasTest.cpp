#include <atomic>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "linux/camera/pipewire/PipeWireCameras.hpp"
#include "platform/drivers/Drivers.hpp"
#include "tests/linux/pipewire/Frames.hpp"
#include "tests/support/PrivatePipeWire.hpp"
#include "tests/support/VirtualCamera.hpp"

namespace nivlo::test {
namespace {

using namespace std::chrono_literals;

constexpr Picture::Color kRed{255, 0, 0};
constexpr Picture::Color kBlue{0, 0, 255};

class PipeWireCamerasTest : public testing::Test {
 protected:
  PipeWireCamerasTest() {
    auto keeper = std::make_unique<LogKeeper>();
    log = keeper.get();
    Drivers drivers;
    drivers.logSink = std::move(keeper);
    installDrivers(std::move(drivers));
  }
  ~PipeWireCamerasTest() override { installDrivers({}); }

  VirtualCamera plugIn(const std::string& name, std::vector<std::string> arguments) {
    return {bus.environment(), {name, std::move(arguments)}};
  }
  static bool has(CameraDriver& cameras, const std::string& id) {
    const std::vector<CameraInfo> all = cameras.cameras();
    return std::any_of(all.begin(), all.end(), [&](const auto& camera) { return camera.uniqueID == id; });
  }
  /// The first picture that a camera with these arguments gives.
  VideoFramePtr firstFrame(const std::vector<std::string>& arguments) {
    const VirtualCamera camera = plugIn("cam", arguments);
    FrameTaker taker;
    const auto cameras = makePipeWireCameras();
    const auto stream = cameras->open("pipewire:cam", taker.handler());
    return taker.next();
  }

  PrivateBus bus;
  ScopedEnvironment environment{bus.environment()};
  LogKeeper* log;
};

class WithADaemon : public PipeWireCamerasTest {
 protected:
  PrivatePipeWire pipewire{bus};
};

TEST_F(WithADaemon, EveryFormatKeepsColoursAndPlaces) {
  struct Case {
    std::vector<std::string> arguments;
    PixelFormat format;
  };
  for (const Case& tried : {
           Case{{"--format", "YUY2"}, PixelFormat::YUY2},
           Case{{"--format", "YUY2", "--padding", "7", "--size", "322x242"}, PixelFormat::YUY2},
           Case{{"--format", "NV12", "--padding", "3", "--size", "322x242"}, PixelFormat::NV12},
           Case{{"--format", "I420", "--padding", "5", "--size", "322x242"}, PixelFormat::I420},
           Case{{"--format", "BGRx"}, PixelFormat::BGRx},
           Case{{"--format", "RGB", "--padding", "1", "--size", "321x241"}, PixelFormat::RGB},
           Case{{"--format", "MJPEG"}, PixelFormat::I420},
           Case{{"--format", "NV12", "--size", "1280x720", "--buffers", "2"}, PixelFormat::NV12},
       }) {
    SCOPED_TRACE(testing::PrintToString(tried.arguments));
    const VideoFramePtr frame = firstFrame(tried.arguments);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->format, tried.format);
    EXPECT_TRUE(showsQuarters(*frame));
  }
  EXPECT_TRUE(log->isEmpty());
}

TEST_F(WithADaemon, ColorimetryIsTheCamerasOrWhatItsSizeSuggests) {
  const VideoFramePtr small = firstFrame({"--format", "I420"});
  ASSERT_TRUE(small);
  EXPECT_EQ(small->matrix, ColorMatrix::BT601);
  EXPECT_EQ(small->range, ColorRange::Limited);
  const VideoFramePtr large = firstFrame({"--format", "I420", "--size", "1280x720"});
  ASSERT_TRUE(large);
  EXPECT_EQ(large->matrix, ColorMatrix::BT709);
  const VideoFramePtr told = firstFrame({"--format", "YUY2", "--matrix", "BT709", "--range", "full"});
  ASSERT_TRUE(told);
  EXPECT_EQ(told->matrix, ColorMatrix::BT709);
  EXPECT_EQ(told->range, ColorRange::Full);
  EXPECT_TRUE(showsQuarters(*told));
}

TEST_F(WithADaemon, ARawModeThatStuttersOrIsSmallLosesToAJpegAt720p) {
  for (const char* first : {"YUY2:640x480@30", "YUY2:1280x720@10", "MJPEG:1920x1080@30"}) {
    SCOPED_TRACE(first);
    const std::string text = first;
    const VideoFramePtr frame =
        firstFrame({"--format", text.substr(0, text.find(':')), "--size",
                    text.substr(text.find(':') + 1, text.find('@') - text.find(':') - 1), "--fps",
                    text.substr(text.find('@') + 1), "--also", "MJPEG:1280x720@30"});
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->height, 720);
    EXPECT_EQ(frame->format, PixelFormat::I420);
  }
}

TEST_F(WithADaemon, CamerasTellTheirSideTheirNameAndHowTheyAreMounted) {
  const VirtualCamera front =
      plugIn("a", {"--location", "front", "--description", "Selfie", "--rotation", "270"});
  const VirtualCamera back = plugIn("z", {"--location", "back"});
  const VirtualCamera unsaid = plugIn("m", {"--description", "USB camera"});
  const auto cameras = makePipeWireCameras();
  const std::vector<CameraInfo> all = cameras->cameras();
  ASSERT_EQ(all.size(), 3U);
  EXPECT_EQ(all[0].uniqueID, "pipewire:z");
  EXPECT_EQ(all[0].position, AVCaptureDevicePosition::Back);
  EXPECT_EQ(all[1].localizedName, "USB camera");
  EXPECT_EQ(all[1].position, AVCaptureDevicePosition::Unspecified);
  EXPECT_EQ(all[2].localizedName, "Selfie");
  EXPECT_EQ(all[2].position, AVCaptureDevicePosition::Front);

  FrameTaker taker;
  const auto stream = cameras->open("pipewire:a", taker.handler());
  const VideoFramePtr frame = taker.next();
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->rotation, 270);
  EXPECT_EQ(cameras->open("pipewire:nobody", taker.handler()), nullptr);

  const VideoFramePtr turned = firstFrame({"--rotation", "180", "--transform", "90"});
  ASSERT_TRUE(turned);
  EXPECT_EQ(turned->rotation, 270);
}

TEST_F(WithADaemon, AnUnpluggedCameraComesBackAndNoOtherTakesItsPlace) {
  const VirtualCamera other = plugIn("other", {"--color", "0000ff"});
  auto camera =
      std::make_unique<VirtualCamera>(bus.environment(), VirtualCameraOptions{"cam", {"--color", "ff0000"}});
  const auto cameras = makePipeWireCameras();
  FrameTaker taker;
  const auto stream = cameras->open("pipewire:cam", taker.handler());
  for (int round = 1; round <= 3; ++round) {
    ASSERT_TRUE(taker.next());
    camera.reset();
    EXPECT_TRUE(waitFor([&] { return log->count("camera cam: gone") == round; }));
    EXPECT_TRUE(waitFor([&] { return !has(*cameras, "pipewire:cam"); }));
    EXPECT_FALSE(taker.next(300ms));
    camera = std::make_unique<VirtualCamera>(bus.environment(),
                                             VirtualCameraOptions{"cam", {"--color", "ff0000"}});
    ASSERT_TRUE(taker.next());
    EXPECT_EQ(log->count("camera cam: back"), round);
  }
  EXPECT_EQ(taker.countOtherThan(kRed), 0);
}

TEST_F(WithADaemon, PicturesOfACameraThatSomebodyLinksToTheStreamAreNotShown) {
  const VirtualCamera other = plugIn("other", {"--color", "0000ff"});
  const VirtualCamera camera = plugIn("cam", {"--color", "ff0000"});
  const auto cameras = makePipeWireCameras();
  FrameTaker taker;
  const auto stream = cameras->open("pipewire:cam", taker.handler());
  ASSERT_TRUE(taker.next());
  ChildProcess link({"pw-link", "other:out_0", "nivlo:in_0"}, bus.environment());
  EXPECT_EQ(link.waitForExit(), 0) << link.output();
  EXPECT_TRUE(waitFor([&] { return log->count("camera cam: back") == 1; }));
  EXPECT_EQ(taker.countOtherThan(kRed), 0);
}

TEST_F(WithADaemon, ACameraThatFallsSilentIsOpenedAgain) {
  VirtualCamera camera = plugIn("cam", {});
  const auto cameras = makePipeWireCameras();
  FrameTaker taker;
  const auto stream = cameras->open("pipewire:cam", taker.handler());
  ASSERT_TRUE(taker.next());
  camera.freeze();
  EXPECT_TRUE(waitFor([&] { return log->count("camera cam: gives no pictures") == 1; }));
  camera.thaw();
  EXPECT_TRUE(taker.next());
  EXPECT_TRUE(waitFor([&] { return log->count("camera cam: back") == 1; }));
}

TEST_F(WithADaemon, ARestartedDaemonBringsOpenStreamsBack) {
  auto camera =
      std::make_unique<VirtualCamera>(bus.environment(), VirtualCameraOptions{"cam", {"--color", "ff0000"}});
  const auto cameras = makePipeWireCameras();
  FrameTaker taker;
  const auto stream = cameras->open("pipewire:cam", taker.handler());
  ASSERT_TRUE(taker.next());
  pipewire.stopDaemon();
  EXPECT_TRUE(waitFor([&] { return log->count("camera cam: gone") == 1; }));
  EXPECT_TRUE(cameras->cameras().empty());
  camera.reset();
  pipewire.startDaemon();
  const VirtualCamera other = plugIn("other", {"--color", "0000ff"});
  camera =
      std::make_unique<VirtualCamera>(bus.environment(), VirtualCameraOptions{"cam", {"--color", "ff0000"}});
  EXPECT_TRUE(taker.next());
  EXPECT_EQ(taker.countOtherThan(kRed), 0);
}

TEST_F(WithADaemon, FramesOutliveTheirStreamTheirCameraAndTheDriver) {
  auto camera =
      std::make_unique<VirtualCamera>(bus.environment(), VirtualCameraOptions{"cam", {"--color", "0000ff"}});
  auto cameras = makePipeWireCameras();
  FrameTaker taker;
  auto stream = cameras->open("pipewire:cam", taker.handler());
  std::vector<VideoFramePtr> held;
  for (int i = 0; i < 3; ++i) held.push_back(taker.next());
  ASSERT_THAT(held, testing::Each(testing::NotNull()));
  camera.reset();
  EXPECT_TRUE(waitFor([&] { return log->count("camera cam: gone") == 1; }));
  EXPECT_TRUE(shows(*held[0], kBlue));
  stream.reset();
  EXPECT_TRUE(shows(*held[1], kBlue));
  cameras.reset();
  EXPECT_TRUE(shows(*held[2], kBlue));
  std::thread([&] { held.clear(); }).join();
}

TEST_F(WithADaemon, FramesThatAreHeldDoNotStopTheCameraNorChange) {
  for (const char* buffers : {"1", "2", "8"}) {
    SCOPED_TRACE(buffers);
    const VirtualCamera camera = plugIn("cam", {"--buffers", buffers});
    const auto cameras = makePipeWireCameras();
    FrameTaker taker;
    const auto stream = cameras->open("pipewire:cam", taker.handler());
    std::vector<VideoFramePtr> held;
    for (int i = 0; i < 12; ++i) held.push_back(taker.next());
    ASSERT_THAT(held, testing::Each(testing::NotNull()));
    for (std::size_t i = 1; i < held.size(); ++i) {
      EXPECT_NE(held[i]->planes[0].data, held[i - 1]->planes[0].data);
      EXPECT_TRUE(showsQuarters(*held[i]));
    }
  }
}

TEST_F(WithADaemon, ClosingWaitsForTheLastFrameAndNoneFollows) {
  const VirtualCamera camera = plugIn("cam", {"--fps", "120"});
  const auto cameras = makePipeWireCameras();
  for (int round = 0; round < 15; ++round) {
    std::atomic<int> arrived = 0;
    std::atomic<bool> open = true;
    std::atomic<bool> late = false;
    auto stream = cameras->open("pipewire:cam", [&](const VideoFramePtr&) {
      if (!open) late = true;
      ++arrived;
    });
    ASSERT_TRUE(waitFor([&] { return arrived > round % 3; }));
    stream.reset();
    open = false;
    cameras->cameras();
    EXPECT_FALSE(late);
  }
}

TEST_F(PipeWireCamerasTest, ADaemonThatComesLaterIsFoundAndItsAbsenceIsNoError) {
  const auto start = std::chrono::steady_clock::now();
  const auto cameras = makePipeWireCameras();
  EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
  EXPECT_TRUE(cameras->cameras().empty());
  EXPECT_EQ(cameras->open("pipewire:cam", [](const VideoFramePtr&) {}), nullptr);
  EXPECT_TRUE(log->isEmpty());

  const PrivatePipeWire pipewire(bus);
  const VirtualCamera camera = plugIn("cam", {});
  EXPECT_TRUE(waitFor([&] { return has(*cameras, "pipewire:cam"); }));
  FrameTaker taker;
  const auto stream = cameras->open("pipewire:cam", taker.handler());
  EXPECT_TRUE(taker.next());
}

}  // namespace
}  // namespace nivlo::test
