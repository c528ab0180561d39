// The command that the desktop runs after another wallpaper has been chosen.
#include <gmock/gmock.h>

#include "host/service/LauncherTexts.hpp"

namespace nivlo::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const LaunchCommand kCommand{"/opt/nivlo", "run", "--preset=3", "--qr=off",
                             R"(--source=back=file:/a b/"50%")"};

/// A path with all that the launchers' languages would read otherwise.
const std::string kPath = R"(/my "walls"/50% $H\Straße.bundle)";

TEST(LauncherTextsTest, AnotherWallpaperIsStartedWithoutWhatWasMeantForTheEarlierOne) {
  auto edited = unitText(kCommand);
  edited.insert(edited.find("Restart="), "Environment=A=B\n");
  auto expected = unitText({"/opt/nivlo", "run", kCommand[4], "--preset=2", "--bundle=" + kPath});
  expected.insert(expected.find("Restart="), "Environment=A=B\n");
  const auto unit = unitWithWallpaper(edited, kPath, 2);
  EXPECT_EQ(unit, expected);
  EXPECT_EQ(autostartWithWallpaper(autostartText(kCommand), kPath, 2),
            autostartText({"/opt/nivlo", "run", kCommand[4], "--preset=2", "--bundle=" + kPath}));
  const auto own = unitWithWallpaper(unit, "", 1);
  EXPECT_THAT(own,
              AllOf(HasSubstr("\"--preset=1\"\n"), Not(HasSubstr("--bundle")), Not(HasSubstr("--preset=2"))));
}

TEST(LauncherTextsTest, AnotherPresetOfTheSameWallpaperKeepsTheOtherOptions) {
  EXPECT_THAT(unitWithWallpaper(unitText(kCommand), "", 4),
              AllOf(HasSubstr("--qr=off"), HasSubstr("--preset=4")));
  EXPECT_THAT(autostartWithWallpaper(autostartText(kCommand), "", 4),
              AllOf(HasSubstr("--qr=off"), HasSubstr("--preset=4"), Not(HasSubstr("--preset=3"))));
  EXPECT_EQ(unitWithWallpaper("[Unit]\n", "", 4), "[Unit]\n");
  EXPECT_EQ(autostartWithWallpaper("not a desktop entry", "", 4), "not a desktop entry");
}

}  // namespace

}  // namespace nivlo::test
