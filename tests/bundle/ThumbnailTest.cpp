#include "platform/Foundation/NSBundle.hpp"
#include "tests/bundle/WallpaperTest.hpp"
#include "tests/fakes/FakeIdentity.hpp"

namespace nivlo {
namespace {

TEST(Thumbnail, IsMissingFromTheBundle) {
  FakeMachine machine;
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(NIVLO_BUNDLE, &error);
  ASSERT_TRUE(bundle) << error;
  EXPECT_FALSE(NivloWallpaper::thumbnailImageForOptions({})) << "found a picture without a bundle";
  NSBundle::registerClass("NivloWallpaper", bundle);
  const auto options = NivloWallpaper::presetWallpaperOptions();
  for (const auto& option : options) {
    const auto* name = option.objectForKey("kSBUIMagicWallpaperThumbnailNameKey");
    const auto path = bundle->pathForResource(std::get<std::string>(*name), "png");
    ASSERT_TRUE(path);
    EXPECT_TRUE(UIImage::imageWithContentsOfFile(*path));
    EXPECT_EQ(NivloWallpaper::thumbnailImageForOptions(option)->size(), (CGSize{640, 400}));
  }
  for (const auto& [identifier, size] :
       {std::pair("iPhone4,1", CGSize{640, 960}), {"iPhone5,1", {640, 1136}}, {"x86_64", {640, 1136}}}) {
    drivers().device = std::make_unique<FakeIdentity>(identifier);
    const auto path = bundle->pathForResource(NivloWallpaper::representativeThumbnailImageName(), "png");
    ASSERT_TRUE(path) << identifier;
    EXPECT_EQ(UIImage::imageWithContentsOfFile(*path)->size(), size) << identifier;
  }
  NSBundle::registerClass("NivloWallpaper", nullptr);
}

}  // namespace
}  // namespace nivlo
