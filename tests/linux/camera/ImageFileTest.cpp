// Picture files that are refused, and the look of the others.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "linux/camera/ImageFile.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/pictures/Encoding.hpp"

namespace nivlo {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

class ImageFile : public testing::Test {
 protected:
  std::filesystem::path file(const std::string& name) const { return directory.path() / name; }

  std::filesystem::path writeSplitPNG(const std::string& name, int width, int height) const {
    std::vector<std::uint8_t> pixels;
    for (int i = 0; i < width * height; ++i) {
      const bool left = i % width < width / 2;
      pixels.insert(pixels.end(), {std::uint8_t(left ? 10 : 200), 120, std::uint8_t(left ? 240 : 30), 77});
    }
    EXPECT_EQ(writePNG(file(name), pixels.data(), width, height, width * 4), "");
    return file(name);
  }

  test::TemporaryDirectory directory;
};

std::array<int, 3> rgbAt(const VideoFrame& frame, int x, int y) {
  const auto* pixel = frame.planes[0].data + y * frame.planes[0].stride + x * 3;
  return {pixel[0], pixel[1], pixel[2]};
}

std::string jpegOf(int width, int height) {
  const auto jpeg = test::encodeJpeg(test::quadrantPicture(width, height), test::JpegChroma::C420);
  return {jpeg.begin(), jpeg.end()};
}

/// Adds an Exif segment that asks for the picture to be turned by 90 degrees clockwise.
std::string turned(std::string jpeg) {
  using namespace std::string_literals;
  constexpr int kBehindStartOfImage = 2;
  return jpeg.insert(kBehindStartOfImage,
                     "\xFF\xE1\0\x22"
                     "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0\0\0\0\0"s);
}

TEST_F(ImageFile, AnythingButACompletePictureIsRefusedWithTheCause) {
  const auto png = directory.read(writeSplitPNG("whole.png", 64, 64));
  const auto refusal = [](const std::filesystem::path& path) {
    const auto load = loadImageFile(path);
    EXPECT_EQ(load.frame, nullptr) << path;
    EXPECT_THAT(load.error, HasSubstr(path.string()));
    return load.error;
  };
  EXPECT_THAT(refusal(file("missing.png")), HasSubstr("no such file"));
  EXPECT_THAT(refusal(directory.write("empty.png", "")), HasSubstr("empty"));
  EXPECT_THAT(refusal(directory.write("text.png", "Dear diary,\n")), HasSubstr("is not a PNG"));
  EXPECT_THAT(refusal(file("")), HasSubstr("directory"));
  EXPECT_THAT(refusal("/dev/zero"), HasSubstr("not a regular file"));
  refusal(directory.write("header.png", png.substr(0, 30)));
  refusal(directory.write("most.png", png.substr(0, png.size() - 20)));
  const auto jpeg = jpegOf(200, 200);
  EXPECT_NE(loadImageFile(directory.write("whole.jpg", jpeg)).frame, nullptr);
  EXPECT_THAT(refusal(directory.write("half.jpg", jpeg.substr(0, jpeg.size() / 2))), HasSubstr("cut short"));
  refusal(directory.write("most.jpg", jpeg.substr(0, jpeg.size() - 2)));
  auto giant = jpegOf(64, 64);
  constexpr int startOfFrameToHeight = 5;
  const auto height = giant.find("\xFF\xC0") + startOfFrameToHeight;
  giant[height] = '\x7F';
  giant[height + 1] = '\xFF';
  EXPECT_THAT(refusal(directory.write("giant.jpg", giant)),
              AllOf(HasSubstr("64 x 32767"), HasSubstr("scale it down")));
}

TEST_F(ImageFile, NoLoaderSeesAFileOfAnotherKindAndNoneIsReadWithoutBound) {
  const auto path =
      directory.write("other.png", "/* XPM */\nstatic char *x[] = {\"1 1 1 1\", \"a c #fff\", \"a\"};\n");
  EXPECT_FALSE(isImageFile(path));
  EXPECT_EQ(loadImageFile(path).frame, nullptr);
  EXPECT_THAT(directory.read("/proc/self/maps"), testing::Not(HasSubstr("pixbufloader-xpm")));

  const auto huge = directory.write("huge.jpg", jpegOf(64, 64));
  std::filesystem::resize_file(huge, 500'000'000);
  EXPECT_THAT(loadImageFile(huge).error, HasSubstr("larger than 400 MB"));
}

TEST_F(ImageFile, ColoursAndOrientationSurvive) {
  const auto wide = loadImageFile(writeSplitPNG("wide.png", 40, 3));
  ASSERT_NE(wide.frame, nullptr) << wide.error;
  EXPECT_THAT(rgbAt(*wide.frame, 19, 2), ElementsAre(240, 120, 10));
  EXPECT_THAT(rgbAt(*wide.frame, 20, 0), ElementsAre(30, 120, 200));
  const auto dot = loadImageFile(writeSplitPNG("dot.png", 1, 1));
  ASSERT_NE(dot.frame, nullptr) << dot.error;
  EXPECT_THAT(rgbAt(*dot.frame, 0, 0), ElementsAre(30, 120, 200));
  const auto upright = loadImageFile(directory.write("turned.jpg", turned(jpegOf(64, 32))));
  ASSERT_NE(upright.frame, nullptr) << upright.error;
  EXPECT_EQ(upright.frame->width, 32);
  EXPECT_EQ(upright.frame->height, 64);
}

}  // namespace
}  // namespace nivlo
