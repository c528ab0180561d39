#include <cmath>

#include <gtest/gtest.h>

#include "platform/AVFoundation/PictureGeometry.hpp"

namespace nivlo {
namespace {

constexpr auto kFill = AVLayerVideoGravity::ResizeAspectFill;

struct Corners {
  CGPoint topLeft, topRight, bottomRight, bottomLeft;
};

/// Where the corners of the delivered 1280x720 picture come to lie.
Corners cornersIn(CGSize layer, int rotation, bool mirrored, AVLayerVideoGravity gravity = kFill) {
  const auto map = pictureToLayer({1280, 720, rotation, mirrored}, layer, gravity);
  const auto at = [&](double x, double y) {
    const auto point = CGPointApplyAffineTransform({x, y}, map);
    return CGPoint{std::round(point.x * 1000) / 1000 + 0.0, std::round(point.y * 1000) / 1000 + 0.0};
  };
  return {at(0, 0), at(1280, 0), at(1280, 720), at(0, 720)};
}

void expectCorners(const Corners& is, const Corners& expected) {
  const auto expectPoint = [](const char* name, CGPoint point, CGPoint wanted) {
    EXPECT_EQ(point, wanted) << name << " at " << point.x << ", " << point.y;
  };
  expectPoint("top left", is.topLeft, expected.topLeft);
  expectPoint("top right", is.topRight, expected.topRight);
  expectPoint("bottom right", is.bottomRight, expected.bottomRight);
  expectPoint("bottom left", is.bottomLeft, expected.bottomLeft);
}

TEST(PictureGeometry, FillsTheLayerAndCropsBothSidesAlike) {
  expectCorners(cornersIn({1920, 1080}, 0, false), {{0, 0}, {1920, 0}, {1920, 1080}, {0, 1080}});
  expectCorners(cornersIn({640, 720}, 0, false), {{-320, 0}, {960, 0}, {960, 720}, {-320, 720}});
  expectCorners(cornersIn({1280, 360}, 0, false), {{0, -180}, {1280, -180}, {1280, 540}, {0, 540}});
  expectCorners(cornersIn({1280, 1080}, 0, false, AVLayerVideoGravity::ResizeAspect),
                {{0, 180}, {1280, 180}, {1280, 900}, {0, 900}});
}

TEST(PictureGeometry, TurnsCounterClockwiseAndMirrorsTheUprightPicture) {
  const CGSize portrait{720, 1280}, landscape{1280, 720};
  const CGPoint right{720, 0}, corner{720, 1280}, bottom{0, 1280}, origin{0, 0};
  expectCorners(cornersIn(portrait, 90, false), {bottom, origin, right, corner});
  expectCorners(cornersIn(portrait, 270, false), {right, corner, bottom, origin});
  expectCorners(cornersIn(landscape, 180, false), {{1280, 720}, {0, 720}, {0, 0}, {1280, 0}});
  expectCorners(cornersIn(landscape, 0, true), {{1280, 0}, {0, 0}, {0, 720}, {1280, 720}});
  expectCorners(cornersIn(portrait, 90, true), {corner, right, origin, bottom});
  expectCorners(cornersIn({1280, 1280}, 90, true),
                {{1280, 1777.778}, {1280, -497.778}, {0, -497.778}, {0, 1777.778}});
}

TEST(PictureGeometry, OfNoPictureHasNoInfinities) {
  const auto map = pictureToLayer({}, {100, 100}, kFill);
  EXPECT_EQ(CGPointApplyAffineTransform({1, 2}, map), (CGPoint{1, 2}));
}

}  // namespace
}  // namespace nivlo
