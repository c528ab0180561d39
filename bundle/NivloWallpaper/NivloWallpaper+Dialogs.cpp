#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "bundle/UIAlertView+Blocks/UIAlertView+Blocks.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSURL.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "platform/UIKit/UIPasteboard.hpp"

namespace nivlo {

namespace {

constexpr auto kTitle = "Barcode";
constexpr auto kCancel = "Cancel";
constexpr auto kOpenLink = "Open Link";
constexpr auto kCopy = "Copy";
constexpr auto kLinkMark = "://";

void openLink(const std::string& text) {
  auto& application = UIApplication::sharedApplication();
  if (application.canOpenURL(NSURL::URLWithString(text))) {
    application.openURL(NSURL::URLWithString(text));
  }
}

void copyToPasteboard(const std::string& text) {
  UIPasteboard::generalPasteboard().setString(text);
  showWithTitle("Copy Succ", "Please feel free to paste to anywhere you want.", "I Know", {}, nullptr);
}

}  // namespace

void NivloWallpaper::showBarcodeAlert() {
  // Walks over a copy, because a dialog may be answered, and the next code found, before the loop ends.
  for (const auto& barcode : Barcodes(foundBarcodes_)) {
    const auto& text = barcode->getBarcodeData();
    if (text.find(kLinkMark) != std::string::npos) {
      offer("Get an URL link: ", text, kOpenLink, openLink);
    } else {
      offer("Get a Barcode with content: ", text, kCopy, copyToPasteboard);
    }
  }
}

/// A tap opens the gate before its action runs, so that scanning continues meanwhile.
void NivloWallpaper::offer(const char* prefix, const std::string& text, const char* action,
                           void (*act)(const std::string& text)) {
  showWithTitle(kTitle, prefix + text, kCancel, {action},
                [self = shared(), text, action, act](UIAlertView& alert, long index) {
                  self->setIsDetactable(true);
                  if (index == alert.cancelButtonIndex()) {
                    NSLog("Cancelled");
                    return;
                  }
                  if (alert.buttonTitleAtIndex(index) == action) {
                    act(text);
                  }
                });
}

}  // namespace nivlo
