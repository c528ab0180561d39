#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "platform/Foundation/Dispatch.hpp"
#include "tests/bundle/WallpaperTest.hpp"

namespace nivlo {
namespace {

DecodedCode inView(const char* text) {
  return {"org.iso.QRCode", text, {{0, 0}, {64, 0}, {64, 48}, {0, 48}}};
}

class Detection : public WallpaperTest {};

TEST_F(Detection, TakesAReportWhileItsGateIsClosed) {
  report({});
  EXPECT_TRUE(view->isDetactable());
  view->captureOutput(*view->metadataOutput(), {code("org.iso.QRCode", "first")}, {});
  EXPECT_FALSE(view->wantsMetadataObjects());
  EXPECT_TRUE(view->foundBarcodes().empty()) << "records were made off the main queue";
  report({code("org.iso.QRCode", "second")});
  EXPECT_EQ(messages(), Strings{"Get a Barcode with content: first"});
}

TEST_F(Detection, LetsAnEarlierCodeOfAReportDecide) {
  report({code("org.gs1.EAN-13", "4006381333931"), code("org.iso.QRCode", "qr")});
  EXPECT_EQ(found(), Strings{"qr"});
  EXPECT_EQ(messages().size(), 1u);
  view->setIsDetactable(true);
  report({code("org.iso.QRCode", "qr"), code("org.example.Other", "x")});
  EXPECT_EQ(found(), Strings{});
  EXPECT_EQ(messages().size(), 1u);
  EXPECT_FALSE(view->isDetactable());
  view->setWallpaperOptions({{"qr", true}});
  EXPECT_TRUE(view->isDetactable());
}

TEST_F(Detection, OffersACodeInViewTwiceOrDecodesDuringADialog) {
  view->setIsDetactable(false);
  view->setAnimating(true);
  machine.reader.putInView({inView("seen")});
  ASSERT_TRUE(machine.watchFrames(100));
  EXPECT_EQ(machine.reader.looks, 0) << "frames were examined behind a closed gate";
  view->setWallpaperOptions({{"qr", true}});
  ASSERT_TRUE(machine.mainQueue.drainUntil([&] { return !machine.alerts.shown.empty(); }));
  EXPECT_EQ(view->foundBarcodes().at(0)->metadataObject()->bounds(), (CGRect{{0, -12.5}, {300, 225}}))
      << "not in the layer's coordinates";
  const int looks = machine.reader.looks;
  ASSERT_TRUE(machine.watchFrames(100));
  EXPECT_EQ(machine.reader.looks, looks) << "frames were examined during a dialog";
  machine.alerts.tapTop(0);
  ASSERT_TRUE(machine.mainQueue.drainUntil([&] { return machine.reader.looks >= looks + 3; }));
  EXPECT_TRUE(machine.alerts.shown.empty()) << "a code that stayed in view was offered again";
  EXPECT_TRUE(view->isDetactable());
}

TEST_F(Detection, NagsAboutACodeThatStayedInViewOverAStop) {
  const auto looksAfter = [this](const std::function<void()>& change) {
    change();
    return machine.mainQueue.drainUntil(
        [&, wanted = machine.reader.looks + 3] { return machine.reader.looks >= wanted; });
  };
  machine.reader.putInView({inView("poster")});
  view->setAnimating(true);
  ASSERT_TRUE(machine.mainQueue.drainUntil([&] { return !machine.alerts.shown.empty(); }));
  machine.alerts.tapTop(0);
  EXPECT_TRUE(looksAfter([&] {
    view->setAnimating(false);
    view->setAnimating(true);
  }));
  EXPECT_TRUE(looksAfter([&] {
    post(UIApplicationDidEnterBackgroundNotification);
    post(UIApplicationWillEnterForegroundNotification);
  }));
  EXPECT_TRUE(looksAfter([&] { view->swapFrontAndBackCameras(); }));
  EXPECT_EQ(messages(), Strings{});
}

TEST_F(Detection, LosesOneOfSeveralCodesInView) {
  machine.reader.putInView({inView("corner"), inView("side"), inView("centre")});
  view->setAnimating(true);
  for (const char* text : {"centre", "side", "corner"}) {
    ASSERT_TRUE(machine.mainQueue.drainUntil([&] { return !machine.alerts.shown.empty(); })) << text;
    EXPECT_EQ(messages(), Strings{std::string("Get a Barcode with content: ") + text});
    machine.alerts.tapTop(0);
  }
}

TEST_F(Detection, ReportsALookThatWasUnderWayAtTheStop) {
  machine.reader.putInView({inView("seen")});
  std::atomic<bool> stopping{false};
  machine.reader.onLook = [&] { test::waitFor([&] { return stopping.load(); }); };
  view->setAnimating(true);
  ASSERT_TRUE(test::waitFor([&] { return machine.reader.looks == 1; }));
  {
    const std::jthread release([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      stopping = true;
    });
    view->setAnimating(false);
  }
  bool handled = false;
  dispatch_async(view->metadataOutput()->metadataObjectsCallbackQueue(),
                 [&] { dispatch_async(dispatch_get_main_queue(), [&] { handled = true; }); });
  ASSERT_TRUE(machine.mainQueue.drainUntil([&] { return handled; }));
  EXPECT_EQ(messages(), Strings{});
  view->setAnimating(true);
  EXPECT_TRUE(machine.mainQueue.drainUntil([&] { return !machine.alerts.shown.empty(); }))
      << "the code counts as offered";
  view->setAnimating(false);
}

TEST_F(Detection, LooksWhileTheReaderMayNot) {
  machine.reader.mayLook = false;
  machine.reader.putInView({inView("seen")});
  view->setAnimating(true);
  ASSERT_TRUE(machine.watchFrames(100));
  EXPECT_EQ(machine.reader.looks, 0);
  machine.reader.onLook = [&] { machine.reader.mayLook = false; };
  machine.reader.mayLook = true;
  ASSERT_TRUE(test::waitFor([&] { return machine.reader.looks == 1; }));
  ASSERT_TRUE(machine.watchFrames(100));
  machine.mainQueue.drain();
  EXPECT_EQ(messages(), Strings{}) << "a look was reported that was forbidden while it was under way";
}

class Dialogs : public WallpaperTest {
 protected:
  /// Reports a code with this text and taps a button of the dialog. Returns whether the gate was closed
  /// before the tap and open after it.
  bool scanAndTap(const std::string& text, long button) {
    view->setIsDetactable(true);
    report({code("org.iso.QRCode", text)});
    const bool closed = !view->isDetactable();
    machine.alerts.tapTop(button);
    return closed && view->isDetactable();
  }
};

TEST_F(Dialogs, ChangeALinkOrOpenItUnasked) {
  const std::string link = "HTTP://example.org/%41?q=1#x";
  report({code("org.iso.QRCode", link)});
  const auto& alert = machine.alerts.shown.at(0);
  EXPECT_EQ(alert.title, "Barcode");
  EXPECT_EQ(alert.message, "Get an URL link: " + link);
  EXPECT_EQ(alert.buttons, (Strings{"Cancel", "Open Link"}));
  EXPECT_EQ(alert.cancelButtonIndex, 0);
  machine.alerts.takeTop();
  bool openWhenAsked = false;
  machine.urls.onAsked = [&] { openWhenAsked = view->isDetactable(); };
  EXPECT_TRUE(scanAndTap(link, 1));
  EXPECT_TRUE(openWhenAsked) << "the action ran before the gate was opened";
  machine.urls.canOpen = false;
  EXPECT_TRUE(scanAndTap(link, 1));
  EXPECT_TRUE(scanAndTap("http://not a link", 1));
  EXPECT_TRUE(scanAndTap(link, 0));
  EXPECT_EQ(machine.urls.asked, (Strings{link, link, ""}));
  EXPECT_EQ(machine.urls.opened, Strings{link});
  EXPECT_EQ(machine.log.lines(), Strings{"Cancelled"});
  EXPECT_TRUE(machine.pasteboard.texts.empty());
}

TEST_F(Dialogs, ChangeACopiedTextOrDoNotConfirmIt) {
  using namespace std::string_literals;
  const auto text = "mailto:ä\0<b>%d"s;
  report({code("org.gs1.EAN-13", text)});
  EXPECT_EQ(messages(), Strings{"Get a Barcode with content: " + text});
  EXPECT_EQ(machine.alerts.shown.at(0).buttons, (Strings{"Cancel", "Copy"}));
  machine.alerts.tapTop(1);
  EXPECT_TRUE(view->isDetactable());
  EXPECT_EQ(machine.pasteboard.texts, Strings{text});
  const auto& confirmation = machine.alerts.shown.at(0);
  EXPECT_EQ(confirmation.title, "Copy Succ");
  EXPECT_EQ(confirmation.message, "Please feel free to paste to anywhere you want.");
  EXPECT_EQ(confirmation.buttons, Strings{"I Know"});
  view->setIsDetactable(false);
  machine.alerts.tapTop(0);
  EXPECT_FALSE(view->isDetactable()) << "the confirmation opened the gate";
}

TEST_F(Dialogs, OpenTheGateWhenTheSystemTakesThemAway) {
  report({code("org.iso.QRCode", "text")});
  machine.alerts.cancelAll();
  EXPECT_FALSE(view->isDetactable());
  EXPECT_TRUE(machine.log.lines().empty());
}

}  // namespace
}  // namespace nivlo
