// The wallpaper on private X servers.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>

#include "linux/camera/ImageFile.hpp"
#include "linux/handles/Owned.hpp"
#include "tests/host/program/Nivlo.hpp"
#include "tests/support/PrivateBus.hpp"
#include "tests/support/desktop/Toolkit.hpp"

namespace nivlo::test {

namespace {

using testing::Eq;
using testing::HasSubstr;

constexpr Picture::Color kLeftHalf{255, 0, 0};
constexpr Picture::Color kRightHalf{0, 255, 0};
constexpr Picture::Color kForeignColor{192, 32, 32};

/// An X server of 800x600 pixels that picks its own display number, and a client to inspect it with.
class PrivateDisplay {
 public:
  explicit PrivateDisplay(const std::vector<std::string>& arguments = {}) {
    std::vector<std::string> command{"Xvfb", "-displayfd", "1", "-noreset", "-screen", "0", "800x600x24"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    server_.emplace(std::move(command));
    server_->expectReady([&] { return server_->standardOutput().ends_with('\n'); });
    name_ = fmt::format(":{}", std::stoi(server_->standardOutput()));
    client_.reset(xcb_connect(name_.c_str(), nullptr));
  }

  Environment environment() const { return {{"DISPLAY", name_}}; }
  xcb_connection_t* client() const { return client_.get(); }
  xcb_window_t root() const { return xcb_setup_roots_iterator(xcb_get_setup(client())).data->root; }
  void kill() { server_->kill(); }
  /// Divides the screen into a left and a right monitor.
  void split() {
    run({"xrandr", "--setmonitor", "left", "400/100x600/100+0+0", "screen"});
    run({"xrandr", "--setmonitor", "right", "400/100x600/100+400+0", "none"});
  }
  void run(std::vector<std::string> command) { outputOf(std::move(command), environment()); }

  /// Waits until the screen has this colour, within 3 of 255, at a place. Returns whether it came to that.
  bool shows(Picture::Color color, int x, int y) const {
    return waitFor([&] {
      const auto request =
          xcb_get_image(client(), XCB_IMAGE_FORMAT_Z_PIXMAP, root(), static_cast<std::int16_t>(x),
                        static_cast<std::int16_t>(y), 1, 1, ~0U);
      const Owned<xcb_get_image_reply_t, std::free> image(xcb_get_image_reply(client(), request, nullptr));
      const auto* pixel = image ? xcb_get_image_data(image.get()) : nullptr;
      return pixel && isNear({pixel[2], pixel[1], pixel[0]}, color);
    });
  }

  /// The window that a click at this place would go to; XCB_NONE for the root window.
  xcb_window_t windowAt(int x, int y) const {
    xcb_warp_pointer(client(), XCB_NONE, root(), 0, 0, 0, 0, static_cast<std::int16_t>(x),
                     static_cast<std::int16_t>(y));
    const Owned<xcb_query_pointer_reply_t, std::free> reply(
        xcb_query_pointer_reply(client(), xcb_query_pointer(client(), root()), nullptr));
    return reply ? reply->child : ~xcb_window_t{XCB_NONE};
  }

 private:
  std::optional<ChildProcess> server_;
  std::string name_;
  Owned<xcb_connection_t, xcb_disconnect> client_{nullptr};
};

xcb_atom_t x11Atom(xcb_connection_t* client, const std::string& name) {
  const auto request = xcb_intern_atom(client, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const Owned<xcb_intern_atom_reply_t, std::free> reply(xcb_intern_atom_reply(client, request, nullptr));
  return reply->atom;
}

/// Another program's window of one colour, 100x100 pixels unless its states make it larger.
class ForeignX11Window {
 public:
  ForeignX11Window(const PrivateDisplay& display, std::int16_t x, std::int16_t y,
                   const std::vector<std::string>& states = {})
      : client_(display.client()), window_(xcb_generate_id(client_)) {
    const std::uint32_t color = kForeignColor[0] << 16 | kForeignColor[1] << 8 | kForeignColor[2];
    xcb_create_window(client_, XCB_COPY_FROM_PARENT, window_, display.root(), x, y, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &color);
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_position(&hints, 1, x, y);
    xcb_icccm_set_wm_normal_hints(client_, window_, &hints);
    for (const auto& state : states) {
      const auto value = x11Atom(client_, state);
      xcb_change_property(client_, XCB_PROP_MODE_APPEND, window_, x11Atom(client_, "_NET_WM_STATE"),
                          XCB_ATOM_ATOM, 32, 1, &value);
    }
    xcb_map_window(client_, window_);
    xcb_flush(client_);
  }
  ~ForeignX11Window() {
    xcb_destroy_window(client_, window_);
    xcb_flush(client_);
  }

 private:
  xcb_connection_t* client_;
  xcb_window_t window_;
};

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
  const ForeignX11Window window(display, 600, 300);
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
  const ForeignX11Window right(display, 500, 100, {"_NET_WM_STATE_FULLSCREEN"});
  EXPECT_TRUE(display.shows(kForeignColor, 790, 10));
  auto left = std::make_unique<ForeignX11Window>(
      display, 100, 100,
      std::vector<std::string>{"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"});
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
  close.type = x11Atom(display.client(), "WM_PROTOCOLS");
  close.data.data32[0] = x11Atom(display.client(), "WM_DELETE_WINDOW");
  xcb_send_event(display.client(), 0, window, 0, reinterpret_cast<const char*>(&close));
  xcb_flush(display.client());
  EXPECT_THAT(program.waitForExit(), Eq(0)) << program.output();
}

}  // namespace

}  // namespace nivlo::test
