// The pictures of the demo cameras.
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "linux/camera/demo/BackScene.hpp"
#include "linux/camera/demo/Canvas.hpp"
#include "linux/codes/decoders/ZXingVersion.hpp"

namespace nivlo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// The format and the text of each code in the scene, as in "QRCode https://example.org".
std::vector<std::string> codesIn(const DemoScene& scene, double seconds) {
  const Layer surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kSceneWidth, kSceneHeight));
  scene.draw(drawOn(surface).get(), seconds);
  cairo_surface_flush(surface.get());
  // Green alone is nearly the luma, and one byte of four needs no name for the format, which ZXing 2 renamed.
  const ZXing::ImageView image(cairo_image_surface_get_data(surface.get()) + 1, kSceneWidth, kSceneHeight,
                               ZXing::ImageFormat::Lum, cairo_image_surface_get_stride(surface.get()), 4);
  std::vector<std::string> found;
  const auto read = [&](ZXing::BarcodeFormats formats, int most) {
    ZXingOptions options = plainOptions();
    options.setFormats(formats).setTryDownscale(false).setMaxNumberOfSymbols(most);
    for (const auto& result : ZXing::ReadBarcodes(image, options)) {
      found.push_back(ZXing::ToString(result.format()));
      found.back().append(" ").append(result.text());
    }
  };
  using enum ZXing::BarcodeFormat;
  read(QRCode | Aztec | PDF417, 8);
  // The library aborts when it may find more than one linear code and sees two equal ones.
  read(EAN8 | EAN13 | UPCE | Code39 | Code93 | Code128, 1);
  return found;
}

TEST(DemoCameras, EverySymbologyIsHeldUpReadablyAndNoCodeIsLeftInBetween) {
  const BackScene scene;
  std::vector<std::string> seen;
  for (int card = 0; card < 10; ++card) {
    const double begin = card * BackScene::kCardPeriod;
    EXPECT_THAT(codesIn(scene, begin + 0.1), IsEmpty()) << begin;
    std::set<std::string> codes;
    for (const double moment : {1.2, 2.5, 3.8}) {
      const auto found = codesIn(scene, begin + moment);
      EXPECT_THAT(found, SizeIs(1)) << begin + moment;
      codes.insert(found.begin(), found.end());
    }
    EXPECT_THAT(codes, SizeIs(1)) << begin;
    seen.insert(seen.end(), codes.begin(), codes.end());
  }
  // EAN, UPC and the second Code 39 end in a check character.
  EXPECT_THAT(seen, ElementsAre("QRCode https://example.org/garden", "EAN-13 2001234567893",
                                "PDF417 DOE/JANE GATE 12 SEAT 4A", "EAN-8 20123451",
                                "Aztec HARBOUR LINE 2 ADULTS 4711", "UPC-E 01234565", "Code128 PARCEL-2041",
                                "Code39 SHELF-42B", "Code39 LENS 7QS", "Code93 CRATE93-17"));
}

}  // namespace
}  // namespace nivlo
