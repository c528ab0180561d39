// The wallpaper on private X servers.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <xcb/xcb.h>

#include "linux/camera/ImageFile.hpp"
#include "tests/host/program/Nivlo.hpp"
#include "tests/support/PrivateBus.hpp"
#include "tests/support/desktop/PrivateDisplay.hpp"
#include "tests/support/desktop/Toolkit.hpp"

namespace nivlo::test {

namespace {

using testing::Eq;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;

/// Long enough for the camera to be closed if the wallpaper counted as hidden.
constexpr std::chrono::seconds kNotSoon{1};
constexpr Picture::Color kLeftHalf{255, 0, 0};
constexpr Picture::Color kRightHalf{0, 255, 0};
constexpr auto kForeignColor = ForeignX11Window::kColor;
constexpr Picture::Color kDesktopColor{32, 32, 192};

/// Writes a picture with a red left half and a green right half, and returns its path.
std::filesystem::path halves(const TemporaryDirectory& directory) {
  std::vector<std::uint8_t> pixels(64 * 48 * 4);
  for (std::size_t i = 0; i < pixels.size() / 4; ++i) {
    pixels[4 * i + (i % 64 < 32 ? 2 : 1)] = 255;
  }
  writePNG(directory.path() / "halves.png", pixels.data(), 64, 48, 64 * 4);
  return directory.path() / "halves.png";
}

TEST(X11Test, TheWallpaperStaysBelowAllWindowsWithAndWithoutAWindowManager) {
  PrivateDisplay display;
  const TemporaryDirectory directory;
  const Nivlo program(
      {"--surface", "x11", "--preset", "4", "--source", "front=file:" + halves(directory).string()},
      display.environment());
  const auto isDesktop = [&] {
    return display.shows(kRightHalf, 20, 20) && display.shows(kLeftHalf, 780, 580) &&
           display.shows(kForeignColor, 650, 350);
  };
  const ForeignX11Window window(display, {.x = 600, .y = 300});
  EXPECT_TRUE(isDesktop()) << "without a window manager (the front camera is mirrored)";
  EXPECT_THAT(display.windowAt(20, 20), Eq(xcb_window_t{XCB_NONE})) << "the wallpaper takes clicks";
  std::optional<ChildProcess> manager(std::in_place, std::vector<std::string>{"openbox"},
                                      display.environment());
  EXPECT_TRUE(waitFor([&] { return display.windowAt(20, 20) != XCB_NONE; }))
      << "the window manager did not get the window";
  EXPECT_TRUE(isDesktop()) << "with a window manager";
  manager.reset();
  EXPECT_TRUE(waitFor([&] { return display.windowAt(20, 20) == XCB_NONE; }))
      << "the wallpaper still takes clicks without a window manager";
  EXPECT_TRUE(isDesktop()) << "after the window manager's end";
  display.split();
  EXPECT_TRUE(display.shows(kLeftHalf, 380, 20) && display.shows(kRightHalf, 420, 20))
      << "each monitor needs a picture of its own";
  display.run({"xrandr", "--delmonitor", "right"});
  display.run({"xrandr", "--delmonitor", "left"});
  EXPECT_TRUE(isDesktop()) << "after both monitors became one again";
}

TEST(X11Test, OnlyWindowsOverAllMonitorsCloseTheCamera) {
  PrivateDisplay display;
  const ChildProcess manager({"openbox"}, display.environment());
  display.split();
  const TemporaryDirectory directory;
  Nivlo program({"--surface", "x11", "--qr", "off", "--source", "back=file:" + halves(directory).string()},
                display.environment());
  ASSERT_TRUE(program.waitForLine("halves.png opened"));
  const ForeignX11Window right(display, {.x = 500, .y = 100, .states = {"_NET_WM_STATE_FULLSCREEN"}});
  EXPECT_TRUE(display.shows(kForeignColor, 790, 10));
  auto left = std::make_unique<ForeignX11Window>(
      display,
      ForeignX11Window::Look{
          .x = 100, .y = 100, .states = {"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"}});
  ASSERT_TRUE(program.waitForLine("halves.png closed"));
  left.reset();
  EXPECT_TRUE(program.waitForLine("halves.png opened")) << "one monitor can be seen again";
  display.kill();
  EXPECT_THAT(program.waitForExit(), Eq(1));
  EXPECT_TRUE(program.waitForLine("the X11 display is gone") && program.waitForLine("halves.png closed"));
}

TEST(X11Test, AMonitorThatIsNotThereIsWaitedForWithTheCameraClosed) {
  PrivateDisplay display;
  const TemporaryDirectory directory;
  Nivlo program({"--output", "left", "--qr", "off", "--source", "back=file:" + halves(directory).string()},
                display.environment());
  ASSERT_TRUE(program.waitForLine("waiting for the output left")) << program.output();
  EXPECT_FALSE(program.waitForLine("halves.png opened", std::chrono::milliseconds(500)));
  display.split();
  EXPECT_TRUE(display.shows(kLeftHalf, 20, 20) && display.shows(kRightHalf, 380, 20));
  ASSERT_TRUE(program.waitForLine("halves.png opened"));
  display.run({"xrandr", "--delmonitor", "left"});
  EXPECT_TRUE(program.waitForLine("waiting for the output left")) << "it has gone again";
  EXPECT_TRUE(program.waitForLine("halves.png closed"));
}

TEST(X11Test, WithoutLayerShellTheDesktopOfXWaylandIsPreferredToAWaylandWindow) {
  PrivateDisplay display;
  const PrivateBus bus;
  const auto wayland = merged(bus.environment(), softwareToolkit("weston"));
  ChildProcess weston(
      {"weston", "--backend=headless-backend.so", "--use-pixman", "--no-config", "--socket=weston"}, wayland);
  weston.expectReady([&] { return std::filesystem::exists(bus.runtimeDirectory() / "weston"); });
  const auto session = merged(wayland, display.environment());
  const std::vector<std::string> arguments{"--source", "back=demo", "--qr", "off", "--frames", "3"};
  Nivlo unknown(arguments, session);
  EXPECT_THAT(unknown.waitForExit(), Eq(0));
  EXPECT_THAT(unknown.output(), HasSubstr("surface: a Wayland window"));
  const ChildProcess manager({"openbox"}, display.environment());
  ASSERT_TRUE(waitFor([&] {
    Nivlo known(arguments, session);
    known.waitForExit();
    return known.output().find("surface: the desktop (X11)") != std::string::npos &&
           known.output().find("does not tell which Wayland windows cover") != std::string::npos;
  }));
}

TEST(X11Test, TiledWindowsCloseTheCameraAndFloatingOnesThatLeaveHalfDoNot) {
  const PrivateDisplay display;
  const ChildProcess manager({"openbox"}, display.environment());
  const TemporaryDirectory directory;
  const auto run = [&](const std::string& policy) {
    return Nivlo({"--surface", "x11", "--qr", "off", "--pause", policy, "--source",
                  "back=file:" + halves(directory).string()},
                 display.environment());
  };
  const auto tile = [&](std::int16_t x, std::int16_t y) {
    return ForeignX11Window(display, {.x = x, .y = y, .width = 390, .height = 290});
  };
  const auto topLeft = tile(0, 0);
  ASSERT_TRUE(waitFor([&] { return display.topOf(topLeft.window()) != topLeft.window(); }))
      << "the window manager must have started, because it maps the wallpaper anew";
  auto program = run("covered");
  ASSERT_TRUE(program.waitForLine("halves.png opened") && display.shows(kRightHalf, 780, 20));
  const auto wallpaper = display.windowAt(780, 20);
  const auto bottomRight = tile(405, 300);
  EXPECT_TRUE(display.shows(kForeignColor, 20, 100) && display.shows(kForeignColor, 780, 500));
  EXPECT_FALSE(program.waitForLine("halves.png closed", kNotSoon)) << "half of it can be seen";
  const auto topRight = tile(405, 0);
  const auto bottomLeft = tile(0, 300);
  EXPECT_TRUE(program.waitForLine("halves.png closed")) << "only a gap can be seen";
  EXPECT_THAT(display.windowAt(398, 400), Eq(wallpaper)) << "there is no gap";
  display.run({"xdotool", "windowmove", std::to_string(bottomLeft.window()), "0", "100"});
  EXPECT_TRUE(program.waitForLine("halves.png opened")) << "a window has been moved away";
  program.terminate();
  display.run({"xdotool", "windowmove", std::to_string(bottomLeft.window()), "0", "300"});
  {
    auto later = run("covered");
    EXPECT_TRUE(later.waitForLine("halves.png closed")) << "the windows were there before it";
  }
  auto fullscreenOnly = run("fullscreen");
  EXPECT_TRUE(fullscreenOnly.waitForLine("halves.png opened"));
  EXPECT_FALSE(fullscreenOnly.waitForLine("halves.png closed", kNotSoon));
}

/// Returns whether the wallpaper becomes visible with nothing between it and the other program's desktop
/// window, and an ordinary window above both.
bool liesDirectlyAbove(const PrivateDisplay& display, const ForeignX11Window& desktop) {
  const auto isAbove = [&] {
    const auto stack = display.stack();
    const auto below = std::find(stack.begin(), stack.end(), display.topOf(desktop.window()));
    return stack.end() - below > 1 && display.titleOf(below[1]) == "Nivlo";
  };
  return waitFor(isAbove) && display.shows(kLeftHalf, 20, 20) && display.shows(kRightHalf, 780, 580) &&
         display.shows(kForeignColor, 650, 350);
}

TEST(X11Test, TheWallpaperLiesBetweenAnotherProgramsDesktopAndAllOtherWindows) {
  const PrivateDisplay display;
  const ChildProcess manager({"openbox"}, display.environment());
  const ForeignX11Window::Look look{
      .width = 800, .height = 600, .type = "_NET_WM_WINDOW_TYPE_DESKTOP", .color = kDesktopColor};
  std::optional<ForeignX11Window> desktop(std::in_place, display, look);
  ASSERT_TRUE(display.shows(kDesktopColor, 20, 20));
  const ForeignX11Window window(display, {.x = 600, .y = 300});
  const TemporaryDirectory directory;
  Nivlo program({"--surface", "x11", "--qr", "off", "--source", "back=file:" + halves(directory).string()},
                display.environment());
  const auto click = [&] {
    display.run({"xdotool", "mousemove", "300", "200", "click", "3"});
    return desktop->isClicked();
  };
  EXPECT_TRUE(liesDirectlyAbove(display, *desktop)) << "started after the other program";
  EXPECT_TRUE(program.waitForLine("hides its icons"));
  EXPECT_TRUE(click()) << "the desktop's menu cannot be opened";
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(display.client(), desktop->window(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
  EXPECT_TRUE(liesDirectlyAbove(display, *desktop)) << "after the other program raised its window";
  desktop.reset();
  EXPECT_TRUE(waitFor([&] { return display.windowAt(20, 20) != XCB_NONE; }))
      << "without the other program, the window manager must know the wallpaper";
  EXPECT_TRUE(display.shows(kLeftHalf, 20, 20)) << "after the other program's end";
  desktop.emplace(display, look);
  EXPECT_TRUE(liesDirectlyAbove(display, *desktop)) << "started before the other program";
  EXPECT_TRUE(click()) << "the desktop's menu cannot be opened";
}

TEST(X11Test, AnotherProgramThatClaimsTheSamePlaceDoesNotKeepTheWallpaperBusy) {
  const PrivateDisplay display;
  const ChildProcess manager({"openbox"}, display.environment());
  const ForeignX11Window desktop(
      display, {.width = 800, .height = 600, .type = "_NET_WM_WINDOW_TYPE_DESKTOP", .color = kDesktopColor});
  const ForeignX11Window window(display, {.x = 600, .y = 300});
  const TemporaryDirectory directory;
  const Nivlo program(
      {"--surface", "x11", "--qr", "off", "--source", "back=file:" + halves(directory).string()},
      display.environment());
  ASSERT_TRUE(liesDirectlyAbove(display, desktop));
  const auto frame = display.topOf(desktop.window());
  int corrections = 0;
  const auto contend = [&] {
    const auto stack = display.stack();
    const auto below = std::find(stack.begin(), stack.end(), frame);
    if (stack.end() - below > 1 && display.titleOf(below[1]) == "Nivlo") {
      ++corrections;
      const std::uint32_t lowest = XCB_STACK_MODE_BELOW;
      xcb_configure_window(display.client(), below[1], XCB_CONFIG_WINDOW_STACK_MODE, &lowest);
    }
    return false;
  };
  waitFor(contend, kNotSoon);
  EXPECT_THAT(corrections, testing::AllOf(Ge(3), Le(20))) << "in one second";
}

TEST(X11Test, WithoutSharedMemoryAWindowIsStillDrawnResizedAndClosed) {
  PrivateDisplay display({"-extension", "MIT-SHM"});
  const TemporaryDirectory directory;
  Nivlo program({"--surface", "window", "--size", "320x240", "--qr", "off", "--source",
                 "back=file:" + halves(directory).string()},
                display.environment());
  ASSERT_TRUE(display.shows(kLeftHalf, 20, 20) && display.shows(kRightHalf, 300, 220));
  const auto window = display.windowAt(20, 20);
  display.run({"xdotool", "windowsize", std::to_string(window), "800", "600"});
  EXPECT_TRUE(display.shows(kLeftHalf, 380, 580) && display.shows(kRightHalf, 780, 580));
  xcb_client_message_event_t close{.response_type = XCB_CLIENT_MESSAGE, .format = 32, .window = window};
  close.type = display.atom("WM_PROTOCOLS");
  close.data.data32[0] = display.atom("WM_DELETE_WINDOW");
  xcb_send_event(display.client(), 0, window, 0, reinterpret_cast<const char*>(&close));
  xcb_flush(display.client());
  EXPECT_THAT(program.waitForExit(), Eq(0)) << program.output();
}

TEST(X11Test, AWindowFitsTheScreenWithItsFrameAndIsClosedWithEscape) {
  const PrivateDisplay display;
  std::optional<ChildProcess> manager;
  for (const bool isManaged : {false, true}) {
    if (isManaged) {
      manager.emplace(std::vector<std::string>{"openbox"}, display.environment());
      const ForeignX11Window window(display, {});
      ASSERT_TRUE(waitFor([&] { return display.topOf(window.window()) != window.window(); }));
    }
    Nivlo program({"--surface", "window", "--qr", "off", "--source", "back=demo"}, display.environment());
    ASSERT_TRUE(program.waitForLine("first picture")) << program.output();
    const auto place = display.placeOf(display.windowAt(400, 300));
    EXPECT_THAT(place.width, Ge(700)) << "there is no large window";
    EXPECT_THAT(place.x, Ge(0));
    EXPECT_THAT(place.y, Ge(0));
    EXPECT_THAT(place.x + place.width, Le(800));
    EXPECT_THAT(place.y + place.height, Le(600));
    display.run({"xdotool", "mousemove", "400", "300", "key", "a"});
    EXPECT_TRUE(program.isRunning());
    display.run({"xdotool", "key", "Escape"});
    EXPECT_THAT(program.waitForExit(), Eq(0)) << program.output();
  }
}

}  // namespace

}  // namespace nivlo::test
