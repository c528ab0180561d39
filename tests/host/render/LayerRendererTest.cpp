// Where each part of a picture lies on the screen, read back from the drawn pixels.
#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "host/render/LayerRenderer.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/support/pictures/Encoding.hpp"

namespace nivlo::test {

namespace {

constexpr std::array kPixelFormats{PixelFormat::YUY2, PixelFormat::NV12, PixelFormat::I420, PixelFormat::BGRx,
                                   PixelFormat::RGB};

VideoFramePtr frameOf(const Picture& picture, Mode::Format format, const Colorimetry& colorimetry = {},
                      int rotation = 0) {
  const auto encoded = std::make_shared<EncodedPicture>(
      encode(picture, {format, picture.width, picture.height}, colorimetry, 0));
  auto frame = std::make_shared<VideoFrame>();
  frame->format = kPixelFormats.at(static_cast<std::size_t>(format));
  frame->width = picture.width;
  frame->height = picture.height;
  frame->rotation = rotation;
  frame->matrix = colorimetry.matrix.value_or(ColorMatrix::BT601);
  frame->range = colorimetry.range.value_or(ColorRange::Limited);
  const auto* first = encoded->bytes.data();
  const auto* second = first + encoded->stride * picture.height;
  frame->planes[0] = {first, encoded->stride};
  if (format == Mode::Format::NV12) {
    frame->planes[1] = {second, encoded->stride};
  } else if (format == Mode::Format::I420) {
    const int half = encoded->stride / 2;
    frame->planes[1] = {second, half};
    frame->planes[2] = {second + half * picture.height / 2, half};
  }
  frame->storage = encoded;
  return frame;
}

Picture::Color at(const Pixels& pixels, int x, int y) {
  const auto* pixel = pixels.data.data() + y * pixels.stride() + x * 4;
  return {pixel[2], pixel[1], pixel[0]};
}

MATCHER_P(IsColor, expected, "") {
  *result_listener << "is " << int(arg[0]) << "," << int(arg[1]) << "," << int(arg[2]);
  return isNear(arg, expected);
}

/// Returns whether there was anything to see.
bool draw(const std::shared_ptr<UIView>& view, Pixels& screen) {
  const CGSize size{static_cast<double>(screen.width), static_cast<double>(screen.height)};
  return LayerRenderer().render({view, size}, screen.span());
}

class LayerRendererTest : public testing::Test {
 protected:
  /// Draws the picture as a camera's, in a wallpaper with this frame, on a screen of this size.
  Pixels draw(const VideoFramePtr& picture, CGRect viewFrame, int width, int height, bool mirrored = false) {
    const auto view = NivloWallpaper::initWithFrame(viewFrame);
    view->previewLayer()->consume({picture, pictureGeometry(*picture, {.mirrored = mirrored})});
    Pixels screen;
    screen.resize(width, height);
    EXPECT_TRUE(test::draw(view, screen));
    return screen;
  }

  FakeMachine machine;
};

TEST_F(LayerRendererTest, EveryFormatKeepsItsColorsUnderItsOwnColorimetry) {
  using Format = Mode::Format;
  for (const auto format : {Format::YUY2, Format::NV12, Format::I420, Format::BGRx, Format::RGB}) {
    for (const auto matrix : {ColorMatrix::BT601, ColorMatrix::BT709}) {
      for (const auto range : {ColorRange::Limited, ColorRange::Full}) {
        SCOPED_TRACE(testing::Message() << int(format) << " " << int(matrix) << " " << int(range));
        for (const Picture::Color color : {Picture::Color{230, 120, 40}, {10, 30, 240}}) {
          const auto frame = frameOf(solidPicture(color, 64, 48), format, {matrix, range});
          EXPECT_THAT(at(draw(frame, {{0, 0}, {64, 48}}, 64, 48), 20, 20), IsColor(color));
        }
      }
    }
  }
}

TEST_F(LayerRendererTest, TheFrontCameraIsAMirrorAndTheBackCameraIsNot) {
  const auto frame = frameOf(quadrantPicture(160, 120), Mode::Format::BGRx);
  const auto straight = draw(frame, {{0, 0}, {160, 120}}, 160, 120);
  EXPECT_THAT(at(straight, 20, 20), IsColor(kRed));
  EXPECT_THAT(at(straight, 140, 20), IsColor(kGreen));
  EXPECT_THAT(at(straight, 20, 100), IsColor(kBlue));
  const auto mirrored = draw(frame, {{0, 0}, {160, 120}}, 160, 120, true);
  EXPECT_THAT(at(mirrored, 20, 20), IsColor(kGreen));
  EXPECT_THAT(at(mirrored, 140, 20), IsColor(kRed));
  EXPECT_THAT(at(mirrored, 140, 100), IsColor(kBlue));
}

TEST_F(LayerRendererTest, APictureOfAnotherShapeFillsTheViewAndIsCroppedEvenlyAtBothEdges) {
  // The picture is twice as wide as the view, so a quarter is cut off on the left and on the right.
  const auto wide =
      draw(frameOf(quadrantPicture(400, 200), Mode::Format::BGRx), {{0, 0}, {100, 100}}, 100, 100);
  EXPECT_THAT(at(wide, 0, 0), IsColor(kRed));
  EXPECT_THAT(at(wide, 48, 48), IsColor(kRed));
  EXPECT_THAT(at(wide, 51, 48), IsColor(kGreen));
  EXPECT_THAT(at(wide, 99, 99), IsColor(kWhite));
  const auto tall =
      draw(frameOf(quadrantPicture(200, 400), Mode::Format::BGRx), {{0, 0}, {300, 100}}, 300, 100);
  EXPECT_THAT(at(tall, 148, 48), IsColor(kRed));
  EXPECT_THAT(at(tall, 151, 51), IsColor(kWhite));
  EXPECT_THAT(at(tall, 0, 99), IsColor(kBlue));
}

TEST_F(LayerRendererTest, ARotatedSensorIsShownUpright) {
  struct Case {
    int rotation;
    bool mirrored;
    Picture::Color topLeft, topRight;
  };
  // A quarter turn counter-clockwise takes the top right corner to the top left.
  for (const auto& [rotation, mirrored, topLeft, topRight] :
       {Case{90, false, kGreen, kWhite}, Case{180, false, kWhite, kBlue}, Case{270, false, kBlue, kRed},
        Case{90, true, kWhite, kGreen}}) {
    SCOPED_TRACE(testing::Message() << rotation << " mirrored " << mirrored);
    const auto frame = frameOf(quadrantPicture(160, 120), Mode::Format::NV12, {}, rotation);
    const auto screen = draw(frame, {{0, 0}, {120, 160}}, 120, 160, mirrored);
    EXPECT_THAT(at(screen, 10, 10), IsColor(topLeft));
    EXPECT_THAT(at(screen, 110, 10), IsColor(topRight));
  }
}

TEST_F(LayerRendererTest, APictureIsTurnedClockwiseAsItIsSeenAlsoInAMirror) {
  const auto frame = frameOf(quadrantPicture(160, 120), Mode::Format::BGRx, {}, 180);
  const auto view = NivloWallpaper::initWithFrame({{0, 0}, {120, 160}});
  const auto topLeft = [&](const PictureTurn& turn) {
    view->previewLayer()->consume({frame, pictureGeometry(*frame, turn)});
    Pixels screen;
    screen.resize(120, 160);
    test::draw(view, screen);
    return at(screen, 10, 10);
  };
  EXPECT_THAT(topLeft({}), IsColor(kWhite));
  EXPECT_THAT(topLeft({.clockwise = 90}), IsColor(kGreen));
  EXPECT_THAT(topLeft({.clockwise = 180}), IsColor(kRed));
  EXPECT_THAT(topLeft({.clockwise = 270}), IsColor(kBlue));
  EXPECT_THAT(topLeft({.mirrored = true}), IsColor(kBlue));
  EXPECT_THAT(topLeft({.clockwise = 90, .mirrored = true}), IsColor(kRed));
}

TEST_F(LayerRendererTest, APreviewIsOffsetByItsViewsOriginAndItsOwnAndClippedToItsSize) {
  // The wallpaper gives the preview its own frame, which is relative to itself: the preview starts at twice
  // the origin.
  const auto frame = frameOf(quadrantPicture(100, 100), Mode::Format::BGRx);
  const auto screen = draw(frame, {{10, 20}, {60, 60}}, 200, 200);
  EXPECT_THAT(at(screen, 19, 40), IsColor(kBlack));
  EXPECT_THAT(at(screen, 20, 39), IsColor(kBlack));
  EXPECT_THAT(at(screen, 20, 40), IsColor(kRed));
  EXPECT_THAT(at(screen, 79, 99), IsColor(kWhite));
  EXPECT_THAT(at(screen, 80, 99), IsColor(kBlack));
  EXPECT_THAT(at(screen, 79, 100), IsColor(kBlack));
  const auto cut = draw(frame, {{-20, 0}, {100, 100}}, 60, 100);
  EXPECT_THAT(at(cut, 0, 10), IsColor(kRed)) << "40 pixels of the preview should lie off the screen";
  EXPECT_THAT(at(cut, 12, 10), IsColor(kGreen));
}

TEST_F(LayerRendererTest, TheBoundsOfACodeMatchWhereItIsDrawn) {
  // A white block on black stands for the code.
  auto picture = solidPicture(kBlack, 160, 120);
  for (int y = 20; y < 40; ++y) {
    for (int x = 100; x < 130; ++x) {
      picture.pixels[y * 160 + x] = kWhite;
    }
  }
  for (const int rotation : {0, 90, 180, 270}) {
    for (const bool mirrored : {false, true}) {
      SCOPED_TRACE(testing::Message() << rotation << " mirrored " << mirrored);
      const auto frame = frameOf(picture, Mode::Format::BGRx, {}, rotation);
      const auto view = NivloWallpaper::initWithFrame({{0, 0}, {160, 160}});
      const auto geometry = pictureGeometry(*frame, {.mirrored = mirrored});
      view->previewLayer()->consume({frame, geometry});
      Pixels screen;
      screen.resize(160, 160);
      test::draw(view, screen);
      const auto code = std::make_shared<AVMetadataMachineReadableCodeObject>(
          "org.iso.QRCode", "", std::vector<CGPoint>{{100, 20}, {130, 20}, {130, 40}, {100, 40}}, geometry);
      const auto bounds = view->previewLayer()->transformedMetadataObjectForMetadataObject(code)->bounds();
      const auto x = [&](double part) {
        return static_cast<int>(bounds.origin.x + part * bounds.size.width);
      };
      const auto y = [&](double part) {
        return static_cast<int>(bounds.origin.y + part * bounds.size.height);
      };
      EXPECT_THAT(at(screen, x(0.1), y(0.1)), IsColor(kWhite));
      EXPECT_THAT(at(screen, x(0.9), y(0.9)), IsColor(kWhite));
      EXPECT_THAT(at(screen, x(-0.1), y(0.5)), IsColor(kBlack));
      EXPECT_THAT(at(screen, x(1.1), y(0.5)), IsColor(kBlack));
      EXPECT_THAT(at(screen, x(0.5), y(1.1)), IsColor(kBlack));
    }
  }
}

TEST_F(LayerRendererTest, APlainLayerShowsItsContentsCroppedToItsOwnRectangle) {
  const auto view = UIView::initWithFrame({{0, 0}, {200, 100}});
  const auto layer = std::make_shared<CALayer>();
  layer->setFrame({{50, 0}, {100, 100}});
  view->layer()->addSublayer(layer);
  Pixels screen;
  screen.resize(200, 100);
  EXPECT_FALSE(test::draw(view, screen)) << "nothing was there to show";

  const auto wide = frameOf(quadrantPicture(400, 200), Mode::Format::RGB);
  layer->setContents(wide);
  EXPECT_EQ(layer->contents(), wide);
  EXPECT_TRUE(test::draw(view, screen));
  EXPECT_THAT(at(screen, 49, 10), IsColor(kBlack)) << "the cropped part is shown beside the layer";
  EXPECT_THAT(at(screen, 50, 0), IsColor(kRed));
  EXPECT_THAT(at(screen, 98, 10), IsColor(kRed));
  EXPECT_THAT(at(screen, 101, 10), IsColor(kGreen));
  EXPECT_THAT(at(screen, 149, 99), IsColor(kWhite));
  EXPECT_THAT(at(screen, 150, 99), IsColor(kBlack));

  view->layer()->setContents(frameOf(solidPicture(kBlue, 20, 10), Mode::Format::BGRx));
  EXPECT_TRUE(test::draw(view, screen));
  EXPECT_THAT(at(screen, 10, 10), IsColor(kBlue));
  EXPECT_THAT(at(screen, 50, 0), IsColor(kRed)) << "the layer's own picture hid its sublayer";

  layer->setContents(nullptr);
  EXPECT_TRUE(test::draw(view, screen));
  EXPECT_THAT(at(screen, 50, 0), IsColor(kBlue)) << "the emptied layer still hid what lies below";
}

}  // namespace

}  // namespace nivlo::test
