// Links go to the programs of the desktop, or nowhere.
#include <filesystem>

#include <gmock/gmock.h>

#include "linux/desktop/DesktopURLOpener.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/LoopUntil.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::test {

namespace {

/// A program stands behind each of the schemes, as it may on any desktop.
class DesktopURLOpenerTest : public testing::Test {
 protected:
  DesktopURLOpenerTest() {
    const auto applications = directory_.path() / "applications";
    directory_.write("handler",
                     "#!/bin/sh\nprintf %s \"$1\" > \"$0.part\" && mv \"$0.part\" \"$0.opened\"\n");
    std::filesystem::permissions(handler_, std::filesystem::perms::owner_all);
    std::string types;
    for (const std::string scheme :
         {"https", "about", "admin", "blob", "computer", "data", "file", "javascript", "network", "recent",
          "resource", "trash", "vbscript", "view-source"}) {
      types += "x-scheme-handler/" + scheme + ';';
    }
    const std::string entry = "[Desktop Entry]\nType=Application\nName=Handler\n";
    directory_.write(applications / "handler.desktop",
                     entry + "Exec=" + handler_.string() + " %u\nMimeType=" + types + "\n");
    directory_.write(applications / "broken.desktop", entry + "Terminal=true\nExec=" + handler_.string() +
                                                          " %u\nMimeType=x-scheme-handler/broken;\n");
    std::string cache = "[MIME Cache]\nx-scheme-handler/broken=broken.desktop;\n";
    for (std::size_t begin = 0; begin < types.size();) {
      const auto end = types.find(';', begin);
      cache += types.substr(begin, end - begin) + "=handler.desktop;\n";
      begin = end + 1;
    }
    directory_.write(applications / "mimeinfo.cache", cache);
  }

  /// Opens a link and returns what the program was given.
  std::string given(const std::string& link) {
    const auto opened = handler_.string() + ".opened";
    std::filesystem::remove(opened);
    const bool isOpened =
        opener_->openURL(link) && loopUntil([&] { return std::filesystem::exists(opened); });
    return isOpened ? directory_.read(opened) : "nothing: " + told_;
  }

  const TemporaryDirectory directory_;
  const std::filesystem::path handler_ = directory_.path() / "handler";
  const ScopedEnvironment environment_{{{"XDG_DATA_HOME", directory_.path().string()},
                                        {"XDG_DATA_DIRS", directory_.path().string()},
                                        {"XDG_CONFIG_HOME", directory_.path().string()}}};
  std::string told_;
  const std::unique_ptr<URLOpener> opener_ = makeDesktopURLOpener(
      {.refused = [this](auto& why) { told_ = why; }, .failed = [this](auto& why) { told_ = why; }});
};

TEST_F(DesktopURLOpenerTest, HandsOverTheExactBytesButForAHostThatBrowsersLookUpByAnotherName) {
  for (const std::string link :
       {"https://example.org/a%20b?q=1&r='x;y'#$(touch%20z)", "HTTPS://A.b:80/100%"}) {
    EXPECT_EQ(given(link), link);
  }
  EXPECT_EQ(given("https://user@b%C3%BCcher.de:80/%C3%BC"), "https://user@xn--bcher-kva.de:80/%C3%BC");
}

TEST_F(DesktopURLOpenerTest, NeverOpensWhatCouldDoHarmWhicheverProgramClaimsIt) {
  for (const std::string harmful :
       {"about:config", "admin:///etc", "blob:https://a/b", "computer:///", "data:text/html,x",
        "file:///etc/passwd", "javascript:alert(1)", "JavaScript://%0aalert(1)", "network:///", "recent:///",
        "resource://a", "trash:///", "vbscript:x", "view-source:https://a.de"}) {
    told_.clear();
    EXPECT_FALSE(opener_->canOpenURL(harmful)) << harmful;
    EXPECT_THAT(given(harmful), testing::HasSubstr("Nivlo does not open ")) << harmful;
  }
}

TEST_F(DesktopURLOpenerTest, SaysWhyALinkDoesNotOpen) {
  EXPECT_TRUE(opener_->canOpenURL("https://example.org"));
  EXPECT_EQ(told_, "");
  EXPECT_EQ(given("otpauth://totp/secret"), "nothing: No program opens otpauth: links");
  EXPECT_EQ(given(std::string(500, 'x') + "://a"), "nothing: No program opens such links");
  EXPECT_EQ(given(""), "nothing: The text is not a valid link");
  EXPECT_EQ(given("https://\xff/"), "nothing: The text is not a valid link");
  EXPECT_EQ(given("https://a/" + std::string(131072, 'x')), "nothing: The link is too long for a program");
  const ScopedEnvironment withoutTerminals({{"PATH", directory_.path().string()}});
  told_.clear();
  opener_->openURL("broken://a");
  EXPECT_TRUE(loopUntil([&] { return told_ == "The program that opens broken: links did not start"; }))
      << told_;
}

}  // namespace

}  // namespace nivlo::test
