// Pictures from files: what is refused, and that what is read looks right.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <turbojpeg.h>

#include "linux/camera/ImageFile.hpp"
#include "tests/support/TemporaryDirectory.hpp"

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
  const int bytes = frame.format == PixelFormat::RGB ? 3 : 4;
  const auto* pixel = frame.planes[0].data + y * frame.planes[0].stride + x * bytes;
  return {pixel[0], pixel[1], pixel[2]};
}

std::string jpegOf(int width, int height, int flags) {
  std::vector<unsigned char> rgb(static_cast<std::size_t>(width) * height * 3);
  for (std::size_t i = 0; i < rgb.size(); ++i) rgb[i] = static_cast<unsigned char>(i * 7 + i / 100);
  unsigned char* jpeg = nullptr;
  unsigned long size = 0;
  tjhandle compressor = tjInitCompress();
  tjCompress2(compressor, rgb.data(), width, 0, height, TJPF_RGB, &jpeg, &size, TJSAMP_420, 80, flags);
  std::string bytes(reinterpret_cast<char*>(jpeg), size);
  tjFree(jpeg);
  tjDestroy(compressor);
  return bytes;
}

/// An Exif segment that says how the picture is to be turned.
std::string withOrientation(const std::string& jpeg, char orientation) {
  using namespace std::string_literals;
  const auto tiff = "II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0"s + orientation + "\0\0\0\0\0\0\0"s;
  const auto body = "Exif\0\0"s + tiff;
  return jpeg.substr(0, 2) + "\xFF\xE1"s + '\0' + static_cast<char>(body.size() + 2) + body + jpeg.substr(2);
}

TEST_F(ImageFile, WhatIsNoWholePictureIsRefusedWithItsCause) {
  const auto png = directory.read(writeSplitPNG("whole.png", 64, 64));
  const auto refusal = [](const std::filesystem::path& path) {
    const auto load = loadImageFile(path);
    EXPECT_EQ(load.frame, nullptr) << path;
    EXPECT_THAT(load.error, HasSubstr(path.string()));
    return load.error;
  };
  EXPECT_THAT(refusal(file("missing.png")), HasSubstr("no such file"));
  EXPECT_THAT(refusal(directory.write("empty.png", "")), HasSubstr("empty"));
  EXPECT_THAT(refusal(directory.write("text.png", "Dear diary,\n")), HasSubstr("does not hold"));
  EXPECT_THAT(refusal(file("")), HasSubstr("directory"));
  EXPECT_THAT(refusal("/dev/zero"), HasSubstr("not a regular file"));
  refusal(directory.write("header.png", png.substr(0, 30)));
  refusal(directory.write("most.png", png.substr(0, png.size() - 20)));
  for (const int flags : {0, TJFLAG_PROGRESSIVE}) {
    const auto jpeg = jpegOf(200, 200, flags);
    EXPECT_NE(loadImageFile(directory.write("whole.jpg", jpeg)).frame, nullptr);
    EXPECT_THAT(refusal(directory.write("half.jpg", jpeg.substr(0, jpeg.size() / 2))),
                HasSubstr("breaks off"));
    refusal(directory.write("most.jpg", jpeg.substr(0, jpeg.size() - 2)));
  }
  auto giant = jpegOf(64, 64, 0);
  constexpr int startOfFrameToHeight = 5;
  giant.replace(giant.find("\xFF\xC0") + startOfFrameToHeight, 2, "\x7F\xFF");
  EXPECT_THAT(refusal(directory.write("giant.jpg", giant)),
              AllOf(HasSubstr("64 x 32767"), HasSubstr("scale it down")));
  // The smallest of lossless WebP pictures.
  const std::string webp("RIFF\032\0\0\0WEBPVP8L\015\0\0\0/\0\0\0\020\007\020\021\021\210\210\376\007\0", 34);
  EXPECT_NE(loadImageFile(directory.write("whole.webp", webp)).frame, nullptr);
  refusal(directory.write("most.webp", webp.substr(0, webp.size() - 4)));
}

TEST_F(ImageFile, ColoursAndOrientationSurviveAndTransparencyShowsWhite) {
  const auto wide = loadImageFile(writeSplitPNG("wide.png", 40, 3));
  ASSERT_NE(wide.frame, nullptr) << wide.error;
  EXPECT_THAT(rgbAt(*wide.frame, 19, 2), ElementsAre(240, 120, 10));
  EXPECT_THAT(rgbAt(*wide.frame, 20, 0), ElementsAre(30, 120, 200));
  const auto dot = loadImageFile(writeSplitPNG("dot.png", 1, 1));
  ASSERT_NE(dot.frame, nullptr) << dot.error;
  EXPECT_THAT(rgbAt(*dot.frame, 0, 0), ElementsAre(30, 120, 200));
  const auto turned = loadImageFile(directory.write("turned.jpg", withOrientation(jpegOf(64, 32, 0), 6)));
  ASSERT_NE(turned.frame, nullptr) << turned.error;
  EXPECT_EQ(turned.frame->width, 32);
  EXPECT_EQ(turned.frame->height, 64);
  // 1 x 1, RGBA 255 0 0 at half opacity.
  const std::string png(
      "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\6\0\0\0\x1f\x15\xc4\x89"
      "\0\0\0\rIDATx\x9c\x63\xf8\xcf\xc0\xd0\0\0\4\x81\1\x80\x2c\x55\xce\xb0\0\0\0\0IEND\xae\x42\x60\x82",
      70);
  const auto half = loadImageFile(directory.write("half.png", png));
  ASSERT_NE(half.frame, nullptr) << half.error;
  EXPECT_THAT(rgbAt(*half.frame, 0, 0), ElementsAre(255, testing::Ge(126), testing::Le(129)));
}

TEST_F(ImageFile, AFailedWriteLeavesNothingBehind) {
  const std::array<std::uint8_t, 4> pixel{};
  EXPECT_THAT(writePNG(file("absent") / "x.png", pixel.data(), 1, 1, 4), HasSubstr("x.png"));
  EXPECT_THAT(writePNG(file("none.png"), pixel.data(), 0, 1, 0), HasSubstr("no picture"));
  EXPECT_FALSE(std::filesystem::exists(file("none.png")));
}

}  // namespace
}  // namespace nivlo
