// The window, on a display of the test's own.
#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>
#include <xcb/xcb.h>

#include "linux/glib/Owned.hpp"
#include "tests/host/program/Nivlo.hpp"

namespace nivlo::test {

namespace {

using testing::Eq;
using testing::HasSubstr;

/// An X server that chooses its own number.
class PrivateDisplay {
 public:
  PrivateDisplay() {
    waitFor([&] { return server_.standardOutput().ends_with('\n') || !server_.isRunning(); });
    const auto number = server_.standardOutput();
    name_ = number.empty() ? "" : ":" + number.substr(0, number.find('\n'));
  }
  const std::string& name() const { return name_; }
  void kill() { server_.kill(); }

 private:
  ChildProcess server_{
      {"Xvfb", "-displayfd", "1", "-screen", "0", "800x600x24", "-nolisten", "tcp", "-noreset"}};
  std::string name_;
};

std::optional<Picture::Color> pixelOf(const std::string& display, int x, int y) {
  const Owned<xcb_connection_t, xcb_disconnect> connection(xcb_connect(display.c_str(), nullptr));
  if (xcb_connection_has_error(connection.get()) != 0) {
    return std::nullopt;
  }
  const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
  const auto request = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root,
                                     static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1, ~0U);
  const Owned<xcb_get_image_reply_t, std::free> image(
      xcb_get_image_reply(connection.get(), request, nullptr));
  if (!image) {
    return std::nullopt;
  }
  const auto* pixel = xcb_get_image_data(image.get());
  return Picture::Color{pixel[2], pixel[1], pixel[0]};
}

TEST(WindowTest, ShowsTheCameraAndEndsWithAReasonWhenTheDisplayGoes) {
  PrivateDisplay display;
  ASSERT_FALSE(display.name().empty()) << "Xvfb did not start";
  const TemporaryDirectory directory;
  const auto picture = directory.path() / "code.png";
  writeCodePicture(picture, "QRCode", "x", {40, 160, 220});
  Nivlo program({"--source", "back=file:" + picture.string(), "--qr", "off", "--size", "640x360"},
                {{"DISPLAY", display.name()}});
  EXPECT_TRUE(waitFor([&] { return isNear(pixelOf(display.name(), 20, 20), {40, 160, 220}); }));
  display.kill();
  EXPECT_THAT(program.waitForExit(), Eq(1));
  EXPECT_THAT(program.output(), HasSubstr("the X11 display is gone"));
  EXPECT_THAT(program.output(), HasSubstr("closed")) << "the camera is released";
}

TEST(WindowTest, WithoutADisplayAWindowIsRefusedAndAutomaticallyItDrawsIntoMemory) {
  Nivlo refused({"--surface", "window", "--source", "back=demo"}, {{"DISPLAY", ":4711"}});
  EXPECT_THAT(refused.waitForExit(), Eq(1));
  EXPECT_THAT(refused.output(), HasSubstr("no X11 display"));
  Nivlo automatic({"--source", "back=demo", "--qr", "off", "--frames", "2"}, {{"DISPLAY", ":4711"}});
  EXPECT_THAT(automatic.waitForExit(), Eq(0));
}

}  // namespace

}  // namespace nivlo::test
