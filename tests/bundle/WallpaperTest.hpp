// A wallpaper on a machine of fakes.
#pragma once

#include <gtest/gtest.h>

#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo {

using Strings = std::vector<std::string>;

class WallpaperTest : public testing::Test {
 protected:
  void TearDown() override {
    // Waits for the layer, because a weak reference to the view expires before the view's destructor has run.
    const auto layer = view ? std::weak_ptr(view->layer()) : std::weak_ptr<CALayer>();
    view.reset();
    machine.alerts.cancelAll();
    EXPECT_TRUE(machine.mainQueue.drainUntil([&] { return layer.expired(); }));
  }

  static std::shared_ptr<AVMetadataObject> code(const char* type, std::string text) {
    return std::make_shared<AVMetadataMachineReadableCodeObject>(
        type, std::move(text), std::vector<CGPoint>{{0, 0}, {9, 0}, {9, 9}}, PictureGeometry{64, 48});
  }
  void report(const MetadataObjects& objects) {
    view->captureOutput(*view->metadataOutput(), objects, {});
    machine.mainQueue.drain();
  }
  void post(const char* notification) {
    NSNotificationCenter::defaultCenter().postNotificationName(notification);
  }
  Strings messages() const {
    Strings all;
    for (const auto& alert : machine.alerts.shown) {
      all.push_back(alert.message);
    }
    return all;
  }
  Strings found() const {
    Strings all;
    for (const auto& barcode : view->foundBarcodes()) {
      all.push_back(barcode->getBarcodeData());
    }
    return all;
  }

  FakeMachine machine;
  std::shared_ptr<NivloWallpaper> view = NivloWallpaper::initWithFrame({{10, 20}, {300, 200}});
};

}  // namespace nivlo
