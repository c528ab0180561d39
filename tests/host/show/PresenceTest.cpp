// When a camera may be open, whatever windows, screen lockers and users do.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "host/show/Presence.hpp"
#include "tests/support/LoopUntil.hpp"

namespace nivlo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PresenceTest : public testing::Test {
 protected:
  std::vector<std::string> taken() { return std::exchange(happened_, {}); }
  void hide() {
    presence_.setVisible(false);
    EXPECT_TRUE(loopUntil([this] { return !presence_.isVisible(); }));
  }

  std::vector<std::string> happened_;
  Presence presence_{{[this](bool animating) { happened_.emplace_back(animating ? "on" : "off"); },
                      [this] { happened_.emplace_back("background"); },
                      [this] { happened_.emplace_back("foreground"); }}};
};

TEST_F(PresenceTest, AnUnlockedSessionIsAnnouncedOnlyWhenSomebodyCanSeeTheWallpaper) {
  presence_.begin();
  EXPECT_THAT(taken(), ElementsAre("on"));
  presence_.setInForeground(false);
  EXPECT_THAT(taken(), ElementsAre("background", "off"));
  hide();
  presence_.setInForeground(true);
  EXPECT_THAT(taken(), IsEmpty()) << "a wallpaper opens its camera at the announcement";
  presence_.setVisible(true);
  EXPECT_THAT(taken(), ElementsAre("foreground", "on"));
}

TEST_F(PresenceTest, NothingIsOpenedBeforeTheOutputIsThere) {
  presence_.setAwaited("the output eDP-1");
  presence_.begin();
  EXPECT_FALSE(presence_.isVisible());
  EXPECT_THAT(taken(), IsEmpty());
  presence_.setAwaited("");
  EXPECT_THAT(taken(), ElementsAre("on"));
  presence_.setAwaited("the output eDP-1");
  EXPECT_THAT(taken(), ElementsAre("off"));
}

TEST_F(PresenceTest, AScreenThatAppearsWhileLockedOrPausedOpensNothingAndABriefCoverClosesNothing) {
  presence_.begin();
  presence_.setVisible(false);
  presence_.setVisible(true);
  presence_.setPaused(true);
  EXPECT_THAT(taken(), ElementsAre("on", "off"));
  presence_.setInForeground(false);
  presence_.setPaused(false);
  hide();
  presence_.setVisible(true);
  EXPECT_THAT(taken(), ElementsAre("background")) << "a screen was plugged in while the session was locked";
}

}  // namespace

}  // namespace nivlo::test
