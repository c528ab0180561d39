// Layers whose pictures come from a thread of the wallpaper's own.
#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "platform/UIKit/CALayer.hpp"

namespace nivlo::test {

namespace {

TEST(LayerTest, PicturesMayComeWhileTheMainThreadReadsAndMovesTheLayer) {
  constexpr int kPicturesSeen = 200;
  const auto root = std::make_shared<CALayer>();
  const auto layer = std::make_shared<CALayer>();
  std::atomic<int> told{0};
  root->setPictureHandler([&] { ++told; });
  std::atomic<bool> painting{true};
  std::thread painter([&] {
    for (int width = 1; painting; ++width) {
      auto picture = std::make_shared<VideoFrame>();
      picture->width = width;
      layer->setContents(picture);
    }
  });
  int newest = 0;
  bool inOrder = true;
  for (int seen = 0; seen < kPicturesSeen;) {
    root->addSublayer(layer);
    const auto shown = layer->picture();
    const int width = shown.geometry.width;
    inOrder = inOrder && width >= newest && (!shown.picture || shown.picture->width == width);
    seen += width > newest ? 1 : 0;
    newest = width;
    layer->removeFromSuperlayer();
  }
  painting = false;
  painter.join();
  EXPECT_TRUE(inOrder) << "a picture came with another one's geometry, or after its successor";
  const int before = told;
  layer->setContents(nullptr);
  EXPECT_EQ(told, before) << "a layer outside the tree still told its surface";
  root->addSublayer(layer);
  layer->setContents(nullptr);
  EXPECT_EQ(told, before + 1);
}

}  // namespace

}  // namespace nivlo::test
