// The sides of cameras that do not say which way they face.
#include <algorithm>

#include <gmock/gmock.h>

#include "linux/camera/selection/AssumedSides.hpp"
#include "linux/camera/selection/CameraSource.hpp"

namespace nivlo::test {
namespace {

using enum AVCaptureDevicePosition;
using Positions = std::vector<AVCaptureDevicePosition>;

class AssumedSidesTest : public testing::Test {
 protected:
  Positions assume(std::vector<CameraInfo> cameras, const Positions& sides = {Back, Front}) {
    sides_.assume(cameras, sides);
    Positions positions;
    std::ranges::transform(cameras, std::back_inserter(positions), &CameraInfo::position);
    return positions;
  }

  AssumedSides sides_;
  const CameraInfo a_{.uniqueID = "a"};
  const CameraInfo b_{.uniqueID = "b"};
  const CameraInfo front_{.uniqueID = "front", .position = Front};
  const CameraInfo back_{.uniqueID = "back", .position = Back};
};

TEST_F(AssumedSidesTest, AnUnknownCameraFacesTheSideThatIsFree) {
  EXPECT_EQ(assume({a_}), Positions{Unspecified}) << "alone";
  EXPECT_EQ(assume({front_, a_}), (Positions{Front, Back}));
  EXPECT_EQ(assume({back_, b_}), (Positions{Back, Front}));
  EXPECT_EQ(assume({back_, front_, {.uniqueID = "c"}}), (Positions{Back, Front, Unspecified}));
  EXPECT_EQ(assume({{.uniqueID = "d"}, {.uniqueID = "e"}}, {Back}), (Positions{Back, Unspecified}))
      << "the user chose that there is no front camera";
}

TEST_F(AssumedSidesTest, OfTwoUnknownCamerasEachKeepsItsSideWhileTheOtherIsAway) {
  EXPECT_EQ(assume({a_, b_}), (Positions{Back, Front}));
  EXPECT_EQ(assume({b_}), Positions{Front});
  EXPECT_EQ(assume({a_}), Positions{Back});
  EXPECT_EQ(assume({a_, b_}), (Positions{Back, Front}));
}

TEST_F(AssumedSidesTest, AGreyCameraIsNotTakenForTheOther) {
  const CameraInfo grey{.uniqueID = "grey", .onlyGrey = true};
  EXPECT_EQ(assume({a_, grey}), (Positions{Unspecified, Unspecified}));
  EXPECT_EQ(assume({front_, a_, grey}), (Positions{Front, Back, Unspecified}));
}

TEST(CameraTurn, AnglesAndTheMirrorAreCombinedAndAnythingElseIsRefused) {
  CameraSources sources;
  for (const char* turn : {"back=90", "back=mirror", "back=270", "front=180"}) {
    EXPECT_EQ(applyCameraTurn(turn, &sources), "");
  }
  for (const char* turn : {"", "back", "back=", "back=0", "back=91", "side=90", "=90", "front=90="}) {
    EXPECT_NE(applyCameraTurn(turn, &sources), "") << turn;
  }
  EXPECT_EQ(sources.backTurn, (PictureTurn{270, true}));
  EXPECT_EQ(sources.frontTurn, (PictureTurn{180, false}));
}

}  // namespace
}  // namespace nivlo::test
