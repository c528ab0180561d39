// The wallpaper as the background of a headless Wayland desktop, with a real PipeWire camera.
#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include "tests/host/program/Nivlo.hpp"
#include "tests/support/MockedService.hpp"
#include "tests/support/PrivatePipeWire.hpp"
#include "tests/support/VirtualCamera.hpp"
#include "tests/support/desktop/ForeignWindow.hpp"
#include "tests/support/desktop/HeadlessSway.hpp"
#include "tests/support/desktop/Toolkit.hpp"
#include "tests/support/desktop/VirtualInput.hpp"

namespace nivlo::test {

namespace {

using testing::Eq;
using testing::HasSubstr;
using testing::Not;

/// Returns whether the quarters of a picture (top left, top right, bottom left, bottom right) have these
/// colours, from the corners to the middle. Where sway scales smoothly, its software renderer mixes the
/// outermost pixels with black.
bool hasQuarters(const Picture& picture, const std::array<Picture::Color, 4>& colors) {
  const int middleX = picture.width / 2;
  const int middleY = picture.height / 2;
  constexpr int kBlur = 8;  // pixels around an edge, which scaling blurs
  constexpr int kRim = 2;
  const int right = picture.width - 1 - kRim;
  const int bottom = picture.height - 1 - kRim;
  for (const auto& [x, y, color] : {std::tuple(kRim, kRim, colors[0]),
                                    {middleX - kBlur, middleY - kBlur, colors[0]},
                                    {right, kRim, colors[1]},
                                    {middleX + kBlur, middleY - kBlur, colors[1]},
                                    {kRim, bottom, colors[2]},
                                    {middleX - kBlur, middleY + kBlur, colors[2]},
                                    {right, bottom, colors[3]},
                                    {middleX + kBlur, middleY + kBlur, colors[3]}}) {
    if (!isNear(picture.at(x, y), color)) {
      return false;
    }
  }
  return true;
}

class DesktopTest : public testing::Test {
 protected:
  bool shows(const std::string& output, const std::array<Picture::Color, 4>& quarters,
             const std::string& name) {
    return waitFor([&] { return hasQuarters(sway_->screenshot(output, name), quarters); });
  }

  Environment environment() const { return merged(pipeWire_.environment(), sway_->environment()); }

  /// Opens a window on the output; the test has told sway to make such windows fullscreen.
  void cover(const std::string& output) {
    sway_->message("focus output " + output);
    const auto before = sway_->focusedWindow();
    windows_.push_back(std::make_unique<ForeignWindow>(environment()));
    EXPECT_TRUE(waitFor([&] { return sway_->focusedWindow() != before; }));
  }

  TemporaryDirectory directory_;
  PrivateBus bus_;
  PrivatePipeWire pipeWire_{bus_};
  std::optional<HeadlessSway> sway_{std::in_place, bus_, std::vector<DesktopSize>{{1920, 1080}, {600, 800}}};
  std::vector<std::unique_ptr<ForeignWindow>> windows_;
};

VirtualCameraOptions camera(const std::string& location, const std::vector<std::string>& more) {
  VirtualCameraOptions options{"cam-" + location, {"--location", location}};
  options.arguments.insert(options.arguments.end(), more.begin(), more.end());
  return options;
}

TEST_F(DesktopTest, EveryOutputIsFilledInTheCamerasColoursThroughAllChangesOfOutputs) {
  VirtualCamera back(environment(), camera("back", {"--format", "NV12", "--size", "1280x720", "--matrix",
                                                    "709", "--range", "limited"}));
  VirtualCamera front(environment(), camera("front", {"--format", "YUY2", "--size", "640x480"}));
  const std::array straight{kRed, kGreen, kBlue, kWhite};
  {
    Nivlo program({"--preset", "3"}, environment());
    EXPECT_TRUE(shows("HEADLESS-1", straight, "back-wide"));
    EXPECT_TRUE(shows("HEADLESS-2", straight, "back-tall"));
    sway_->message("create_output");
    EXPECT_TRUE(shows("HEADLESS-3", straight, "back-added"));
    sway_->message("output HEADLESS-2 resolution 1024x600");
    EXPECT_TRUE(shows("HEADLESS-2", straight, "back-resized"));
    sway_->message("output HEADLESS-2 resolution 640x1 scale 3");
    sway_->message("output HEADLESS-2 resolution 800x600 scale 1");
    EXPECT_TRUE(shows("HEADLESS-2", straight, "back-flat"));
    sway_->message("output HEADLESS-1 scale 1.5");
    EXPECT_TRUE(shows("HEADLESS-1", straight, "back-scaled"));
    EXPECT_THAT(program.terminate(), Eq(0)) << program.output();
    EXPECT_TRUE(back.waitForPaused());
  }
  Nivlo program({"--preset", "4", "--output", "HEADLESS-2"}, environment());
  EXPECT_TRUE(shows("HEADLESS-2", {kGreen, kRed, kWhite, kBlue}, "front"));
  EXPECT_FALSE(isNear(sway_->screenshot("HEADLESS-1", "other").at(0, 0), kGreen, 60))
      << "the wallpaper is on an output that was not chosen";
}

TEST_F(DesktopTest, TheCameraIsClosedWhileNoOutputShowsTheWallpaper) {
  sway_->message("for_window [title=foreign] fullscreen enable");
  VirtualCamera back(environment(), camera("back", {}));
  Nivlo program({"--preset", "3"}, environment());
  ASSERT_TRUE(back.waitForStreaming());
  cover("HEADLESS-1");
  EXPECT_FALSE(back.waitForPaused(std::chrono::milliseconds(1500)))
      << "the other output still shows the wallpaper";
  cover("HEADLESS-2");
  EXPECT_TRUE(back.waitForPaused());
  windows_.pop_back();
  EXPECT_TRUE(back.waitForStreaming());
  windows_.clear();
  sway_->kill();
  EXPECT_THAT(program.waitForExit(), Eq(1)) << program.output();
  EXPECT_THAT(program.output(), HasSubstr("the Wayland compositor is gone"));
  EXPECT_TRUE(back.waitForPaused());
}

TEST_F(DesktopTest, TiledWindowsThatLeaveNextToNothingFreeCloseTheCameraAndOthersDoNot) {
  constexpr std::chrono::milliseconds kNotSoon{2500};
  for (const std::string command : {"border normal", "floating enable", "resize set 300 400"}) {
    sway_->message("for_window [title=foreign] " + command);
  }
  VirtualCamera back(environment(), camera("back", {}));
  Nivlo program({"--preset", "3", "--output", "HEADLESS-2"}, environment());
  ASSERT_TRUE(back.waitForStreaming());
  cover("HEADLESS-2");
  cover("HEADLESS-2");
  EXPECT_FALSE(back.waitForPaused(kNotSoon)) << "small floating windows hide a quarter each";
  sway_->message("[title=foreign] floating disable");
  sway_->message("layout splitv");
  EXPECT_TRUE(back.waitForPaused()) << "two tiled windows, of which 6 % are title bars";
  sway_->message("gaps inner all set 60");
  EXPECT_TRUE(back.waitForStreaming()) << "the gaps are a third of the output";
  sway_->message("gaps inner all set 0");
  EXPECT_TRUE(back.waitForPaused());
  sway_->message("workspace 7");
  EXPECT_TRUE(back.waitForStreaming()) << "an empty workspace";
  sway_->message("workspace back_and_forth");
  sway_->message("layout stacking");
  EXPECT_TRUE(back.waitForPaused());
  EXPECT_FALSE(back.waitForStreaming(kNotSoon)) << "6 % are titles of stacked windows";
  sway_->message("move scratchpad");
  sway_->message("[title=foreign] move scratchpad");
  EXPECT_TRUE(back.waitForStreaming()) << "nothing is shown of the scratchpad";
  EXPECT_THAT(program.terminate(), Eq(0)) << program.output();
  EXPECT_THAT(program.output(), Not(HasSubstr("does not tell where")));
}

TEST_F(DesktopTest, AnOutputThatIsNotThereIsWaitedForWithTheCameraClosed) {
  VirtualCamera back(environment(), camera("back", {}));
  Nivlo program({"--preset", "3", "--output", "HEADLESS-3"}, environment());
  const auto isWaiting = [this] {
    Nivlo status({"ctl", "status"}, environment());
    status.waitForExit();
    return status.output().find("waiting for the output HEADLESS-3") != std::string::npos;
  };
  ASSERT_TRUE(program.waitForLine("waiting for the output HEADLESS-3")) << program.output();
  EXPECT_TRUE(waitFor(isWaiting));
  EXPECT_THAT(program.output(), testing::AllOf(HasSubstr("now are: HEADLESS-"), Not(HasSubstr("opened"))));
  sway_->message("create_output");
  EXPECT_TRUE(shows("HEADLESS-3", {kRed, kGreen, kBlue, kWhite}, "awaited"));
  EXPECT_FALSE(isWaiting());
}

TEST_F(DesktopTest, TheCameraIsClosedOnceTheLastOutputIsGoneAndOpenedWithTheNext) {
  const HeadlessSway inner(bus_, *sway_);
  VirtualCamera back(environment(), camera("back", {}));
  Nivlo program({"--preset", "3"}, merged(environment(), inner.environment()));
  ASSERT_TRUE(back.waitForStreaming());
  inner.message("create_output");
  const auto unplugOne = [this] {
    sway_->message("[app_id=wlroots] focus");
    sway_->message("kill");
  };
  const auto isGone = [&] {
    try {
      inner.screenshot("WL-2", "unplugged");
      return false;
    } catch (const std::runtime_error&) {
      return true;
    }
  };
  ASSERT_TRUE(waitFor([&] { return !isGone(); }));
  unplugOne();
  ASSERT_TRUE(waitFor(isGone));
  EXPECT_FALSE(back.waitForPaused(std::chrono::seconds(1))) << "another output is left";
  unplugOne();
  EXPECT_TRUE(program.waitForLine("waiting for an output")) << program.output();
  EXPECT_TRUE(back.waitForPaused());
  inner.message("create_output");
  EXPECT_TRUE(back.waitForStreaming());
  EXPECT_TRUE(waitFor([&] {
    return hasQuarters(inner.screenshot("WL-3", "plugged-in"), {kRed, kGreen, kBlue, kWhite});
  }));
  EXPECT_THAT(program.terminate(), Eq(0)) << program.output();
}

TEST_F(DesktopTest, WindowsThatWereThereBeforeTheWallpaperAreKnown) {
  sway_->message("for_window [title=foreign] fullscreen enable");
  VirtualCamera back(environment(), camera("back", {}));
  cover("HEADLESS-2");
  const Environment unknown{{"SWAYSOCK", std::nullopt}};
  for (const auto& more : {Environment(), unknown}) {
    const auto run = [&](const std::string& policy) {
      return std::make_unique<Nivlo>(
          std::vector<std::string>{"--preset", "3", "--output", "HEADLESS-2", "--pause", policy},
          merged(environment(), more));
    };
    auto program = run("covered");
    EXPECT_TRUE(back.waitForStreaming() && back.waitForPaused());
    program.reset();
    program = run("never");
    EXPECT_TRUE(back.waitForStreaming());
    EXPECT_FALSE(back.waitForPaused(std::chrono::milliseconds(1500)))
        << "sway asks for no pictures because of the window, not because the screen is off";
    program.reset();
    EXPECT_TRUE(back.waitForPaused());
  }
}

TEST_F(DesktopTest, ADesktopWithItsOwnBackgroundDoesNotCoverTheWallpaper) {
  constexpr Picture::Color kOwn{192, 32, 32};
  const std::array own{kOwn, kOwn, kOwn, kOwn};
  const std::array camera{kRed, kGreen, kBlue, kWhite};
  const VirtualCamera back(environment(), nivlo::test::camera("back", {}));
  // Up to sway 1.9, what came first to a layer stays above what comes later; since then it is below.
  ChildProcess earlier({NIVLO_TEST_BACKGROUND, "c02020"}, environment());
  earlier.expectLine("mapped");
  {
    const Nivlo chosen({"--preset", "3", "--layer", "bottom"}, environment());
    EXPECT_TRUE(shows("HEADLESS-1", camera, "bottom"));
  }
  Nivlo automatic({"--preset", "3"}, environment());
  ASSERT_TRUE(automatic.waitForLine("first picture"));
  ChildProcess later({NIVLO_TEST_BACKGROUND, "c02020"}, environment());
  later.expectLine("mapped");
  EXPECT_TRUE(shows("HEADLESS-1", own, "automatic-covered")) << "the stand-in covers nothing";
  const auto plasma = std::make_unique<MockedService>(
      bus_, "org.kde.plasmashell",
      std::vector<std::string>{"org.kde.plasmashell", "/", "org.kde.PlasmaShell"});
  EXPECT_TRUE(shows("HEADLESS-1", camera, "automatic-above-plasma"));
  EXPECT_TRUE(shows("HEADLESS-2", camera, "automatic-above-plasma-too"));
  EXPECT_TRUE(automatic.waitForLine("hides its icons"));
}

TEST(WindowTest, AWindowFitsTheScreenAndIsClosedWithEscape) {
  PrivateBus bus;
  const HeadlessSway sway(bus, {{600, 800}});
  sway.message("floating_maximum_size -1 x -1");
  sway.message("for_window [app_id=nivlo] floating enable");
  VirtualInput input(sway);
  Nivlo program({"--surface", "window", "--source", "back=demo", "--qr", "off"}, sway.environment());
  ASSERT_TRUE(program.waitForLine("first picture")) << program.output();
  ASSERT_TRUE(waitFor([&] { return sway.focusedWindow().has_value(); }));
  const auto window = sway.focusedWindow().value_or(WindowPlace());
  EXPECT_THAT(window.application, Eq("nivlo"));
  EXPECT_THAT(window.width, testing::AllOf(testing::Gt(0), testing::Le(600)));
  EXPECT_THAT(window.height, testing::AllOf(testing::Gt(0), testing::Le(800)));
  input.key(KEY_A);
  EXPECT_TRUE(program.isRunning());
  input.key(KEY_ESC);
  EXPECT_THAT(program.waitForExit(), Eq(0)) << program.output();
}

TEST(WindowTest, ACompositorWithoutLayerShellGetsAWindowAndAReason) {
  PrivateBus bus;
  const auto environment = merged(bus.environment(), softwareToolkit("weston"));
  ChildProcess weston(
      {"weston", "--backend=headless-backend.so", "--use-pixman", "--no-config", "--socket=weston"},
      environment);
  weston.expectReady([&] { return std::filesystem::exists(bus.runtimeDirectory() / "weston"); });
  Nivlo program({"--source", "back=demo", "--qr", "off", "--frames", "3"}, environment);
  EXPECT_THAT(program.waitForExit(), Eq(0));
  EXPECT_THAT(program.output(),
              testing::AllOf(HasSubstr("has no layer shell"), HasSubstr("a Wayland window")));
  Nivlo refused({"--surface", "wayland"}, environment);
  EXPECT_THAT(refused.waitForExit(), Eq(1));
}

}  // namespace

}  // namespace nivlo::test
