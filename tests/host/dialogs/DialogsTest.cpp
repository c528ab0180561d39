// Dialogs on a private desktop, answered with a mouse and a keyboard.
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include "tests/support/ProcessTree.hpp"
#include "tests/support/TestBundle.hpp"
#include "tests/support/desktop/PrivateDisplay.hpp"
#include "tests/support/desktop/VirtualInput.hpp"

namespace nivlo::test {

namespace {

using namespace std::string_literals;

/// Markup, a line that poses as another message, a right-to-left override, an escape sequence, invisible
/// characters, a tag character, a byte that is not UTF-8 and NUL, followed by more text than fits on a
/// screen.
std::string hostileText() {
  auto text =
      "<b>bold</b> &amp; https://bank.example@evil.example:80/ \u202emoc.knab\u202c\nGet a Barcode with "
      "content: ok"
      "\r\n\u2028two\x1b[31m zero\u200bwidth \U000e0041 \xff and NUL"s +
      '\0' + "behind it\n";
  while (text.size() < 4096) {
    text += "averylongwordwithoutanyplacetobreakit";
  }
  return text;
}

/// Returns whether the process has loaded the toolkit, but no graphics driver.
bool isLight(pid_t process) {
  const auto maps = processFile(process, "maps");
  const auto holds = [&](const char* library) { return maps.find(library) != std::string::npos; };
  return holds("libgtk-4") && !holds("libLLVM") && !holds("_dri.so") && !holds("libvulkan");
}

class DialogsTest : public testing::Test {
 protected:
  explicit DialogsTest(DesktopSize screen = {1280, 720}) : sway_(bus_, {screen}) {}

  void show(const std::string& title, const std::string& text, const std::string& indices = "0 -1") {
    const auto file = directory_.write(title, text);
    const auto earlier = sway_.focusedWindow();
    ASSERT_TRUE(program_.write("show " + title + ' ' + indices + ' ' + file.string() + '\n'));
    ASSERT_TRUE(program_.waitForLine(title + " appeared")) << program_.output();
    ASSERT_TRUE(waitFor([&] { return sway_.focusedWindow() != earlier; }));
  }

  /// Clicks on the second of the two buttons that lie side by side at the bottom of a dialog until the
  /// program has said this. A window that has only just appeared does not react yet.
  bool pressSecondButton(const std::string& line) {
    return waitFor([&] {
      if (const auto window = sway_.focusedWindow()) {
        input_.clickBottomRow(*window, 0.75);
      }
      return program_.waitForLine(line, std::chrono::milliseconds(1000)).has_value();
    });
  }

  /// Waits until another program finds this text on the clipboard. Returns whether it came to that.
  bool pastes(const std::string& text) const {
    return waitFor([&] {
      ChildProcess paste({"wl-paste", "--no-newline"}, sway_.environment());
      return paste.waitForExit() == 0 && paste.standardOutput() == text;
    });
  }

  /// The process that shows the dialogs; 0 if none runs.
  pid_t helper() const { return childNamed(program_.pid(), "nivlo-dialogs"); }

  bool told(const std::string& line) { return program_.waitForLine(line).has_value(); }

  const TemporaryDirectory directory_;
  PrivateBus bus_;
  HeadlessSway sway_;
  VirtualInput input_{sway_};
  ChildProcess program_{{NIVLO_TEST_DIALOGS}, merged(sway_.environment(), {{"GSK_RENDERER", std::nullopt}})};
};

TEST_F(DialogsTest, CopiesEveryByteOfAHostileTextWhileTheOlderDialogWaits) {
  const auto text = hostileText();
  show("older", "Get an URL link: https://bank.example@evil.example/login?next=https://bank.example");
  sway_.screenshot("HEADLESS-1", "dialog-link");
  EXPECT_EQ(sway_.focusedWindow()->application, "nivlo") << "must be the name of the desktop entry";
  show("newer", text);
  sway_.screenshot("HEADLESS-1", "dialog-hostile");
  ASSERT_TRUE(pressSecondButton("newer tapped Copy")) << program_.output();
  ASSERT_TRUE(told("newer gone"));
  EXPECT_TRUE(pastes(text));
  EXPECT_THAT(program_.output(), testing::Not(testing::HasSubstr("older tapped")));
}

TEST_F(DialogsTest, TheTextStaysOnTheClipboardAfterTheProgramUntilSomethingElseIsCopied) {
  show("code", "4006381333931");
  const auto window = *sway_.focusedWindow();
  EXPECT_TRUE(waitFor([&] {
    input_.click(window.x + window.width / 2, window.y + window.height / 2 - 12);
    ChildProcess selected({"wl-paste", "--primary", "--no-newline"}, sway_.environment());
    return selected.waitForExit() == 0 && selected.standardOutput() == "4006381333931";
  })) << "by double clicks on the text";
  ASSERT_TRUE(pressSecondButton("code tapped Copy")) << program_.output();
  ASSERT_TRUE(told("code gone"));
  const auto serving = helper();
  program_.closeInput();
  EXPECT_EQ(program_.waitForExit(), 0) << program_.output();
  EXPECT_NE(serving, 0);
  EXPECT_TRUE(pastes("4006381333931"));
  outputOf({"wl-copy", "something else"}, sway_.environment());
  EXPECT_TRUE(waitFor([&] { return !isAlive(serving); }));
}

TEST_F(DialogsTest, ADialogNeedsNoGraphicsDriverAndIsShownAgainOnceIfItsProcessDies) {
  EXPECT_EQ(helper(), 0) << "before the first dialog";
  show("robust", "text");
  EXPECT_TRUE(isLight(helper()));
  EXPECT_THAT(processFile(program_.pid(), "maps"), testing::Not(testing::HasSubstr("libgtk")));
  const auto first = helper();
  kill(first, SIGKILL);
  ASSERT_TRUE(waitFor([&] { return helper() != 0 && helper() != first && sway_.focusedWindow(); }));
  input_.key(KEY_ESC);
  ASSERT_TRUE(told("robust tapped Cancel")) << program_.output();
  EXPECT_TRUE(waitFor([&] { return helper() == 0; })) << "without a dialog";
  show("fragile", "text");
  for (int attempt = 0; attempt < 2; ++attempt) {
    const auto shown = helper();
    kill(shown, SIGKILL);
    waitFor([&] { return helper() != shown; });
    waitFor([&] { return helper() != 0; }, std::chrono::seconds(1));
  }
  EXPECT_TRUE(told("== fragile ==")) << "in the terminal: " << program_.output();
}

TEST_F(DialogsTest, EscapePressesTheCancelButtonAndTheEndOfTheProgramCancelsTheNewestFirst) {
  show("first", "one");
  const auto first = std::to_string(sway_.focusedWindow()->id);
  show("second", "two", "1 -1");
  sway_.message("[con_id=" + first + "] focus");
  input_.key(KEY_ESC);
  EXPECT_TRUE(told("second tapped Copy")) << "Copy is its cancel button";
  show("third", "three", "-1 1");
  input_.key(KEY_ENTER);
  input_.key(KEY_ESC);
  EXPECT_TRUE(told("third cancelled")) << "without a cancel button the last one counts, which is disabled";
  show("fourth", "four");
  program_.write("cancel-all\n");
  for (const auto* line : {"fourth cancelled", "fourth gone", "first cancelled", "first gone"}) {
    EXPECT_TRUE(told(line)) << program_.output();
  }
  program_.closeInput();
  EXPECT_EQ(program_.waitForExit(), 0) << program_.output();
}

TEST(X11ClipboardTest, TheTextStaysOnTheClipboardAfterTheProgramUntilSomethingElseIsCopied) {
  const TemporaryDirectory directory;
  const PrivateBus bus;
  const PrivateDisplay display;
  const auto environment =
      merged(merged(bus.environment(), display.environment()), {{"WAYLAND_DISPLAY", std::nullopt},
                                                                {"GSK_RENDERER", std::nullopt},
                                                                {"GTK_A11Y", "none"},
                                                                {"GSETTINGS_BACKEND", "memory"}});
  const auto text = hostileText();
  ChildProcess program({NIVLO_TEST_DIALOGS}, environment);
  program.write("copy " + directory.write("text", text).string() + '\n');
  const auto clipboard = [&] {
    ChildProcess reader({"xclip", "-selection", "clipboard", "-out"}, environment);
    return reader.waitForExit() == 0 ? reader.standardOutput() : "";
  };
  ASSERT_TRUE(waitFor([&] { return clipboard() == text; })) << program.output();
  const auto serving = childNamed(program.pid(), "nivlo-dialogs");
  EXPECT_TRUE(isLight(serving));
  program.closeInput();
  EXPECT_EQ(program.waitForExit(), 0) << program.output();
  EXPECT_EQ(clipboard(), text);
  ChildProcess other({"xclip", "-selection", "clipboard", "-in", "-quiet", "/dev/null"}, environment);
  EXPECT_TRUE(waitFor([&] { return !isAlive(serving); }));
}

class PhoneDialogsTest : public DialogsTest {
 protected:
  PhoneDialogsTest() : DialogsTest({360, 640}) {}
};

TEST_F(PhoneDialogsTest, KeepsTheButtonsBelowALongTextOnTheScreen) {
  show("long", hostileText());
  sway_.screenshot("HEADLESS-1", "dialog-phone");
  const auto window = *sway_.focusedWindow();
  EXPECT_GE(window.y, 0);
  EXPECT_LE(window.width, 360);
  EXPECT_TRUE(pressSecondButton("long tapped Copy")) << program_.output();
}

TEST_F(PhoneDialogsTest, PicksAPresetByTouchAndByKeyboardOnAPhone) {
  ChildProcess picker({NIVLO_TEST_DIALOGS, NIVLO_BUNDLE}, sway_.environment());
  ASSERT_TRUE(waitFor([&] { return sway_.focusedWindow().has_value(); })) << picker.output();
  input_.click(180, 340);
  EXPECT_TRUE(picker.waitForLine("picked NivloWallpaper 2")) << picker.output();
  input_.key(KEY_END);
  input_.key(KEY_SPACE);
  EXPECT_TRUE(picker.waitForLine("picked NivloWallpaper 4")) << picker.output();
  sway_.screenshot("HEADLESS-1", "pick-phone");
  // The first Escape only dismisses the error message of preset 4.
  EXPECT_TRUE(waitFor([&] {
    input_.key(KEY_ESC);
    return picker.waitForExit(std::chrono::milliseconds(200)) == 0;
  })) << picker.output();
}

TEST_F(PhoneDialogsTest, PicksAmongSeveralWallpapersAndFindsTheWayBack) {
  const auto paint = writeBundle(directory_.path(), "Paint", "Paint", NIVLO_TEST_WALLPAPERS);
  std::filesystem::copy_file(NIVLO_BUNDLE "/nivlowallpaper3.png", paint / "sample.png");
  const auto plain = writeBundle(directory_.path(), "Plain", "Plain", NIVLO_TEST_WALLPAPERS);
  ChildProcess picker({NIVLO_TEST_DIALOGS, NIVLO_BUNDLE, paint, plain}, sway_.environment());
  ASSERT_TRUE(waitFor([&] { return sway_.focusedWindow().has_value(); })) << picker.output();
  // Clicks until a wallpaper, and then the first of its presets, which takes its place, have been picked. A
  // second click that comes too early makes a double click, which picks nothing.
  const auto pickFirstAt = [&](double x, double y, const std::string& line) {
    return waitFor([&] {
      input_.click(x, y);
      return picker.waitForLine(line, std::chrono::milliseconds(600)).has_value();
    });
  };
  EXPECT_TRUE(pickFirstAt(270, 180, "picked Paint 1")) << picker.output();
  input_.key(KEY_END);
  input_.key(KEY_SPACE);
  EXPECT_TRUE(picker.waitForLine("picked Paint 2")) << picker.output();
  sway_.screenshot("HEADLESS-1", "pick-presets-phone");
  input_.key(KEY_ESC);
  EXPECT_TRUE(pickFirstAt(90, 180, "picked NivloWallpaper 1")) << picker.output();
  input_.click(22, 22);  // the button that leads back
  EXPECT_TRUE(waitFor([&] {
    sway_.screenshot("HEADLESS-1", "pick-wallpapers-phone");
    input_.key(KEY_ESC);
    return picker.waitForExit(std::chrono::milliseconds(200)) == 0;
  })) << picker.output();
}

}  // namespace

}  // namespace nivlo::test
