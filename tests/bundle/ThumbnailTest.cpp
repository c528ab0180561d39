#include <string_view>

#include "platform/Foundation/NSBundle.hpp"
#include "tests/bundle/WallpaperTest.hpp"
#include "tests/fakes/FakeIdentity.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo {
namespace {

using namespace std::string_view_literals;

TEST(Thumbnail, IsMissingFromTheBundle) {
  FakeMachine machine;
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(NIVLO_BUNDLE, &error);
  ASSERT_TRUE(bundle) << error;
  EXPECT_FALSE(NivloWallpaper::thumbnailImageForOptions({})) << "no bundle holds the class";
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

TEST(Thumbnail, IsTakenFromAFileThatIsNoPicture) {
  const test::TemporaryDirectory directory;
  const auto path = directory.path() / "picture.png";
  const auto load = [&](std::string_view content) {
    return UIImage::imageWithContentsOfFile(directory.write(path, content));
  };
  EXPECT_FALSE(UIImage::imageWithContentsOfFile(path));
  EXPECT_FALSE(UIImage::imageWithContentsOfFile(directory.path()));
  constexpr auto good = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\1\2\xff\0\0\1rest"sv;
  EXPECT_FALSE(load(""));
  EXPECT_FALSE(load(good.substr(0, 23)));
  EXPECT_FALSE(load("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\0\0\0\0\1rest"sv));
  EXPECT_FALSE(load("GIF89a, and then some more bytes that are no picture either"));
  const auto image = load(good);
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (CGSize{258, 4278190081}));
  EXPECT_EQ(image->data(), good);
}

}  // namespace
}  // namespace nivlo
