// Cameras that come, go, stall and return, on a real PipeWire daemon.
#include <atomic>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "linux/camera/pipewire/PipeWireCameras.hpp"
#include "platform/Foundation/NSThread.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/linux/pipewire/Frames.hpp"
#include "tests/support/PrivatePipeWire.hpp"
#include "tests/support/VirtualCamera.hpp"

namespace nivlo::test {
namespace {

using namespace std::chrono_literals;

/// A driver and the open stream of one camera.
struct OpenCamera {
  std::unique_ptr<CameraDriver> cameras = makePipeWireCameras();
  FrameWatcher frames;
  std::unique_ptr<CameraStream> stream;

  explicit OpenCamera(const std::string& id = "pipewire:cam") : stream(cameras->open(id, frames.handler())) {}
  bool offers(const std::string& id) const {
    return std::ranges::any_of(cameras->cameras(), [&](const auto& camera) { return camera.uniqueID == id; });
  }
};

class PipeWireCamerasTest : public testing::Test {
 protected:
  using Camera = std::unique_ptr<VirtualCamera>;

  Camera plugIn(const std::string& name, std::vector<std::string> arguments) {
    return std::make_unique<VirtualCamera>(bus.environment(),
                                           VirtualCameraOptions{name, std::move(arguments)});
  }
  Camera plugInRed() { return plugIn("cam", {"--color", "ff0000"}); }
  Camera plugInAnother() { return plugIn("other", {"--color", "0000ff"}); }
  bool appearsInLog(const std::string& line, int times = 1) {
    return waitFor([&] { return log.count("camera cam: " + line) == times; });
  }

  PrivateBus bus;
  ScopedEnvironment environment{bus.environment()};
  LoggingMachine machine;
  RecordingLog& log = machine.log;
};

class PipeWireCamerasWithDaemonTest : public PipeWireCamerasTest {
 protected:
  PrivatePipeWire pipewire{bus};
};

TEST_F(PipeWireCamerasWithDaemonTest, EveryModeKeepsGeometryColoursAndRotationAndTheBetterOfTwoIsChosen) {
  using enum PixelFormat;
  using enum ColorMatrix;
  using enum ColorRange;
  using Texts = std::vector<std::string>;
  const struct {
    Texts arguments;
    PixelFormat format;
    int height = 480;
    ColorMatrix matrix = BT601;
    ColorRange range = Limited;
    int rotation = 0;
  } cases[] = {
      {{"--format", "YUY2", "--padding", "7", "--size", "322x242"}, YUY2, 242},
      {{"--format", "YUY2", "--matrix", "709", "--range", "full"}, YUY2, 480, BT709, Full},
      {{"--format", "NV12", "--padding", "3", "--size", "322x242"}, NV12, 242},
      {{"--format", "NV12", "--size", "1280x720", "--buffers", "2"}, NV12, 720, BT709},
      {{"--format", "I420", "--padding", "5", "--size", "322x242"}, I420, 242},
      {{"--format", "BGRx", "--rotation", "180", "--transform", "90"}, BGRx, 480, BT601, Limited, 270},
      {{"--format", "RGB", "--padding", "1", "--size", "321x241", "--rotation", "270"},
       RGB,
       241,
       BT601,
       Limited,
       270},
      {{"--format", "YUY2", "--also", "MJPEG:1280x720@30"}, I420, 720, BT601, Full},
      {{"--format", "YUY2", "--size", "1280x720", "--fps", "10", "--also", "MJPEG:1280x720@30"},
       I420,
       720,
       BT601,
       Full},
      {{"--format", "MJPEG", "--size", "1920x1080", "--also", "MJPEG:1280x720@30"}, I420, 720, BT601, Full},
  };
  for (const auto& tried : cases) {
    SCOPED_TRACE(testing::PrintToString(tried.arguments));
    const Camera camera = plugIn("cam", tried.arguments);
    OpenCamera opened;
    const VideoFramePtr frame = opened.frames.next();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->format, tried.format);
    EXPECT_EQ(frame->height, tried.height);
    EXPECT_EQ(frame->rotation, tried.rotation);
    if (tried.format != BGRx && tried.format != RGB) {
      EXPECT_EQ(frame->matrix, tried.matrix);
      EXPECT_EQ(frame->range, tried.range);
    }
    EXPECT_TRUE(showsQuadrants(*frame));
  }
  EXPECT_EQ(log.count(), 0);
}

TEST_F(PipeWireCamerasWithDaemonTest, ACameraThatOffersOnlyGreyIsShownInGrey) {
  using Texts = std::vector<std::string>;
  for (const auto& range : {Texts{"--range", "full"}, Texts{"--range", "limited"}}) {
    Texts arguments{"--format", "Grey", "--size", "322x242", "--color", "ff0000"};
    arguments.insert(arguments.end(), range.begin(), range.end());
    const Camera camera = plugIn("cam", arguments);
    OpenCamera opened;
    ASSERT_TRUE(opened.frames.next());
    const auto red = static_cast<std::uint8_t>(0.299 * 255);  // its luma, by BT.601
    EXPECT_EQ(opened.frames.countOtherThan({red, red, red}), 0);
  }
}

TEST_F(PipeWireCamerasWithDaemonTest, AnUnpluggedCameraComesBackAndNoOtherTakesItsPlace) {
  const Camera other = plugInAnother();
  Camera camera = plugInRed();
  OpenCamera opened;
  for (int round = 1; round <= 3; ++round) {
    ASSERT_TRUE(opened.frames.next());
    camera.reset();
    EXPECT_TRUE(appearsInLog("it is gone", round));
    EXPECT_TRUE(waitFor([&] { return !opened.offers("pipewire:cam"); }));
    EXPECT_FALSE(opened.frames.next(300ms));
    camera = plugInRed();
    ASSERT_TRUE(opened.frames.next());
    EXPECT_EQ(log.count("camera cam: its picture is back"), round);
  }
  // The name of a port differs between versions of PipeWire.
  const auto portOf = [&](const std::string& direction, const std::string& node) {
    const auto ports = outputOf({"pw-link", direction}, bus.environment());
    const auto begin = ports.find(node + ':');
    return ports.substr(begin, ports.find('\n', begin) - begin);
  };
  outputOf({"pw-link", portOf("--output", "other"), portOf("--input", "nivlo")}, bus.environment());
  EXPECT_TRUE(appearsInLog("its picture is back", 4));
  EXPECT_EQ(opened.frames.countOtherThan(kRed), 0) << "the other camera was shown";
}

TEST_F(PipeWireCamerasWithDaemonTest, ACameraThatGoesSilentIsOpenedAgain) {
  const Camera camera = plugInRed();
  OpenCamera opened;
  ASSERT_TRUE(opened.frames.next());
  camera->freeze();
  EXPECT_TRUE(appearsInLog("it delivers no pictures"));
  camera->thaw();
  EXPECT_TRUE(opened.frames.next());
  EXPECT_TRUE(appearsInLog("its picture is back"));
}

TEST_F(PipeWireCamerasWithDaemonTest, HeldFramesDoNotStopTheCameraAndOutliveItUnchanged) {
  int gone = 0;
  for (const char* buffers : {"1", "2", "8"}) {
    SCOPED_TRACE(buffers);
    Camera camera = plugIn("cam", {"--buffers", buffers});
    OpenCamera opened;
    std::vector<VideoFramePtr> held;
    for (int i = 0; i < 12; ++i) {
      held.push_back(opened.frames.next());
    }
    ASSERT_THAT(held, testing::Each(testing::NotNull()));
    camera.reset();
    EXPECT_TRUE(appearsInLog("it is gone", ++gone));
    EXPECT_TRUE(showsQuadrants(*held.front()));
    opened.stream.reset();
    opened.cameras.reset();
    for (std::size_t i = 1; i < held.size(); ++i) {
      EXPECT_NE(held[i]->planes[0].data, held[i - 1]->planes[0].data);
      EXPECT_TRUE(showsQuadrants(*held[i]));
    }
    std::thread([&] { held.clear(); }).join();
  }
}

TEST_F(PipeWireCamerasWithDaemonTest, ClosingWaitsForTheFrameUnderWayAndNoFrameFollows) {
  const Camera camera = plugIn("cam", {"--fps", "120"});
  const auto cameras = makePipeWireCameras();
  for (int round = 0; round < 15; ++round) {
    std::atomic<int> arrived = 0;
    std::atomic<bool> open = true, late = false;
    std::optional<std::string> thread;
    auto stream = cameras->open("pipewire:cam", [&](const VideoFramePtr&) {
      thread = NSThread::currentThread().name();
      if (!open) {
        late = true;
      }
      ++arrived;
    });
    ASSERT_TRUE(waitFor([&] { return arrived > round % 3; }));
    stream.reset();
    open = false;
    cameras->cameras();
    EXPECT_FALSE(late);
    EXPECT_EQ(thread, "camera");
  }
  EXPECT_EQ(NSThread::currentThread().name(), std::nullopt) << "the camera's name went to the main thread";
}

TEST_F(PipeWireCamerasWithDaemonTest, AHostileCameraCostsOnlyItsOwnPictures) {
  using Texts = std::vector<std::string>;
  const struct {
    Texts arguments;
    bool isTruthful;  ///< its pictures arrive, and are right
  } cases[] = {
      {{"--memory", "sealed"}, true},
      {{"--memory", "unsealed"}, true},
      {{"--memory", "unsealed", "--format", "MJPEG"}, true},
      {{"--memory", "small"}, false},
      {{"--memory", "small", "--format", "MJPEG", "--size", "1280x720"}, false},
      {{"--memory", "shrinking"}, false},
      {{"--memory", "shrinking", "--format", "MJPEG", "--size", "1280x720"}, false},
      {{"--memory", "sealed", "--mischief", "jpeg", "--format", "MJPEG"}, false},
      {{"--memory", "sealed", "--mischief", "chunks"}, false},
      {{"--memory", "unsealed", "--mischief", "chunks", "--format", "NV12", "--size", "322x242"}, false},
      {{"--memory", "sealed", "--mischief", "chunks", "--format", "I420", "--buffers", "2"}, false},
      {{"--memory", "sealed", "--mischief", "chunks", "--format", "MJPEG"}, false},
  };
  for (const auto& [arguments, isTruthful] : cases) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    auto faster = arguments;
    faster.insert(faster.end(), {"--fps", "200"});
    const Camera camera = plugIn("cam", faster);
    OpenCamera opened;
    EXPECT_TRUE(camera->waitForStreaming());
    const VideoFramePtr frame = opened.frames.next(isTruthful ? kPatience : 500ms);
    ASSERT_TRUE(frame || !isTruthful);
    EXPECT_TRUE(!isTruthful || showsQuadrants(*frame));
    std::this_thread::sleep_for(300ms);
  }
  const Camera camera = plugInRed();
  OpenCamera opened;
  EXPECT_TRUE(opened.frames.next()) << "after all of these";
}

TEST_F(PipeWireCamerasWithDaemonTest, TooFewDescriptorsEndNothingAndTheCameraIsShownOnceThereAreEnough) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "UndefinedBehaviorSanitizer needs descriptors of its own to look at an object";
#endif
  const Camera camera = plugInRed();
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  const rlimit enough = limit;
  const auto open = static_cast<rlim_t>(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
  close(static_cast<int>(open));
  for (rlim_t few = 0; few < 24; ++few) {
    limit.rlim_cur = open + few;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
    std::optional<OpenCamera> opened(std::in_place);
    setrlimit(RLIMIT_NOFILE, &enough);
  }
  OpenCamera opened;
  EXPECT_TRUE(opened.frames.next());
}

TEST_F(PipeWireCamerasTest, ACameraOpenedBeforeItsDaemonRunsIsShownOnceBothAreThere) {
  OpenCamera opened;
  EXPECT_TRUE(opened.cameras->cameras().empty());
  EXPECT_TRUE(appearsInLog("there is no such camera; plug it in"));
  const PrivatePipeWire pipewire(bus);
  const Camera camera = plugInRed();
  EXPECT_TRUE(opened.frames.next());
}

}  // namespace
}  // namespace nivlo::test
