// From a code before the camera to another program, through the dialogs of a desktop.
#include <gtest/gtest.h>

#include "tests/host/program/Nivlo.hpp"
#include "tests/support/PrivatePipeWire.hpp"
#include "tests/support/VirtualCamera.hpp"
#include "tests/support/desktop/VirtualInput.hpp"

namespace nivlo::test {

namespace {

constexpr double kLeft = 0.25;
constexpr double kRight = 0.75;

class DialogRoadTest : public testing::Test {
 protected:
  std::unique_ptr<VirtualCamera> holdUp(const std::string& text) {
    const auto picture = directory_.path() / "code.png";
    writeCodePicture(picture, "QRCode", text);
    return std::make_unique<VirtualCamera>(
        environment(),
        VirtualCameraOptions{"cam-back", {"--location", "back", "--picture", picture.string()}});
  }

  Environment environment() const { return merged(pipeWire_.environment(), sway_.environment()); }

  /// Clicks on a button of the next dialog.
  void press(double part) {
    ASSERT_TRUE(waitFor([&] {
      const auto window = sway_.focusedWindow();
      return window && window->id != answered_;
    }));
    const auto dialog = *sway_.focusedWindow();
    answered_ = dialog.id;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    sway_.screenshot("HEADLESS-1", test->name() + std::to_string(dialog.id));
    input_.clickBottomRow(dialog, part);
  }

  /// Registers a program for https links that writes what it is given into a file.
  std::filesystem::path registerHandler() {
    const auto applications = bus_.dataDirectory() / "applications";
    const auto script = directory_.write(
        "handler", "#!/bin/sh\nprintf %s \"$1\" > \"$0.part\" && mv \"$0.part\" \"$0.opened\"\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    directory_.write(applications / "handler.desktop",
                     "[Desktop Entry]\nType=Application\nName=Handler\nExec=" + script.string() +
                         " %u\nMimeType=x-scheme-handler/https;\n");
    directory_.write(applications / "mimeapps.list",
                     "[Default Applications]\nx-scheme-handler/https=handler.desktop\n");
    return script.string() + ".opened";
  }

  TemporaryDirectory directory_;
  PrivateBus bus_;
  PrivatePipeWire pipeWire_{bus_};
  HeadlessSway sway_{bus_};
  VirtualInput input_{sway_};
  long answered_ = 0;
};

TEST_F(DialogRoadTest, CancelGoesOnScanningAndOpenLinkHandsOverTheExactBytes) {
  const std::string link = "https://example.org/a%20b?q=1&r='x;y'#$(touch%20z)";
  const auto opened = registerHandler();
  auto camera = holdUp("https://example.org/first");
  Nivlo program({}, environment());
  press(kLeft);
  ASSERT_TRUE(program.waitForLine("Cancelled")) << program.output();
  camera.reset();
  camera = holdUp(link);
  press(kRight);
  ASSERT_TRUE(waitFor([&] { return std::filesystem::exists(opened); })) << program.output();
  EXPECT_EQ(directory_.read(opened), link);
}

}  // namespace

}  // namespace nivlo::test
