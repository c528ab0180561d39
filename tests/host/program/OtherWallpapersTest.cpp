// The program with wallpapers that are not its own.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "tests/host/program/Nivlo.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/TestBundle.hpp"
#include "tests/support/pictures/PictureFile.hpp"

namespace nivlo::test {

namespace {

using testing::AllOf;
using testing::Eq;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

class OtherWallpapersTest : public testing::Test {
 protected:
  std::string bundle(const std::string& className) {
    return writeBundle(directory_.path(), className, className, NIVLO_TEST_WALLPAPERS).string();
  }
  /// Runs it to its end with this status and returns all that it wrote.
  static std::string run(const Words& arguments, int status, const Environment& environment = {}) {
    Nivlo program(arguments, environment);
    EXPECT_THAT(program.waitForExit(), Eq(status)) << program.output();
    return program.output();
  }

  TemporaryDirectory directory_;
};

TEST_F(OtherWallpapersTest, AWallpaperSpeaksForItselfAndIsNotAskedForWhatItDoesNotHave) {
  const auto paint = bundle("Paint");
  EXPECT_EQ(run({"presets", "--bundle", paint}, 0), "1  all red\n2  all blue\n");
  EXPECT_EQ(nlohmann::json::parse(run({"presets", "--json", "--bundle", paint + "/"}, 0), nullptr, false),
            nlohmann::json::parse(R"([{"preset": 1, "blue": false, "description": "all red"},
                                      {"preset": 2, "blue": true, "description": "all blue"}])"));
  EXPECT_THAT(run({"--bundle", paint, "--preset", "3"}, 1),
              AllOf(HasSubstr("Paint has 2 presets; there is no preset 3"), HasSubstr("--bundle " + paint)));
  EXPECT_THAT(run({"--bundle", paint, "--qr", "on"}, 1), HasSubstr("Paint does not read codes"));
  EXPECT_THAT(run({"--bundle", paint, "--camera", "front"}, 1), HasSubstr("Paint has no camera to choose"));
  EXPECT_THAT(run({"chime", "--bundle", paint}, 1), HasSubstr("Paint has no chime"));
}

TEST_F(OtherWallpapersTest, AWallpaperThatDrawsItsOwnPicturesIsShown) {
  const auto snapshot = directory_.path() / "wall.png";
  run({"--bundle", bundle("Paint"), "--preset", "2", "--surface", "offscreen", "--size", "64x48", "--frames",
       "1", "--snapshot", snapshot.string()},
      0);
  const auto picture = readPicture(snapshot);
  EXPECT_TRUE(isNear(picture.at(32, 24), {0, 0, 255}));
}

TEST_F(OtherWallpapersTest, FaultsOfAWallpaperAreToldAndContained) {
  const Words once{"--seconds", "0.2", "--surface", "offscreen", "--bundle"};
  const auto show = [&](const char* className, int status) {
    auto arguments = once;
    arguments.push_back(bundle(className));
    return run(arguments, status);
  };
  EXPECT_THAT(show("Viewless", 1), AllOf(HasSubstr("Viewless cannot be shown"), HasSubstr("has no view")));
  EXPECT_THAT(show("Unbuildable", 1), HasSubstr("initWithFrame returns nothing"));
  EXPECT_THAT(show("Throwing", 1), HasSubstr("initWithFrame throws: not today"));
  EXPECT_THAT(show("Unaskable", 1), HasSubstr("presetWallpaperOptions throws: no presets today"));
  EXPECT_THAT(show("Plain", 0), AllOf(HasSubstr("setWallpaperOptions throws: no options please"),
                                      HasSubstr("setWallpaperVariant throws: an exception without a message"),
                                      HasSubstr(R"(setAnimating throws: no animation\x1b[2J please)")));
  EXPECT_THAT(show("Late", 0), Not(HasSubstr("Too late"))) << "a dialog after the end";
  EXPECT_EQ(run({"presets", "--bundle", bundle("Plain")}, 0), "1  preset 1\n");
  const auto pipe = directory_.path() / "Pipe.bundle";
  std::filesystem::create_directory(pipe);
  ASSERT_EQ(mkfifo((pipe / "Info.plist").c_str(), S_IRUSR | S_IWUSR), 0);
  EXPECT_THAT(run({"presets", "--bundle", pipe}, 1), HasSubstr("not a regular file"))
      << "it waits for a writer";
}

TEST_F(OtherWallpapersTest, InstalledWallpapersAreListedOnceAndFoundByNameWhateverIsWrongWithOthers) {
  const auto own = directory_.path() / "own" / "nivlo" / "wallpapers";
  const auto shared = directory_.path() / "shared" / "nivlo" / "wallpapers";
  writeBundle(own, "Paint", "Paint", NIVLO_TEST_WALLPAPERS);
  writeBundle(own, "Moody", "Unaskable", NIVLO_TEST_WALLPAPERS);
  writeBundle(shared, "paint", "Plain", NIVLO_TEST_WALLPAPERS);
  writeBundle(shared, "Straße", "Plain", NIVLO_TEST_WALLPAPERS);
  directory_.write(shared / "Empty.bundle" / "readme", "");
  const Environment environment{{"XDG_DATA_HOME", directory_.path() / "own"},
                                {"XDG_DATA_DIRS", (directory_.path() / "none").string() + ":" +
                                                      (directory_.path() / "shared").string()}};
  const auto listed = nlohmann::json::parse(
      run({"wallpapers", "--json", "--machine", "iPhone4,1"}, 0, environment), nullptr, false);
  ASSERT_EQ(listed.size(), 5u) << listed;
  EXPECT_EQ(listed[0]["name"], "Nivlo");
  EXPECT_EQ(listed[0]["representativeThumbnailImageName"], "nivlowallpaper1-hero4");
  EXPECT_EQ(listed[0]["colorChangesSignificantly"], true);
  EXPECT_THAT(listed[1]["error"].get<std::string>(), HasSubstr("no presets today"));
  EXPECT_EQ(listed[2]["identifier"], "test.paint");
  EXPECT_EQ(listed[2]["presets"], 2);
  EXPECT_THAT(listed[3]["error"].get<std::string>(), HasSubstr("Info.plist"));
  EXPECT_EQ(listed[4]["name"], "Straße");
  EXPECT_THAT(run({"wallpapers"}, 0, environment),
              AllOf(HasSubstr("Paint\n"), HasSubstr("no presets today")));
  EXPECT_EQ(run({"presets", "--bundle", "PAINT"}, 0, environment), "1  all red\n2  all blue\n");
  EXPECT_EQ(run({"presets", "--bundle", "STRASSE"}, 0, environment), "1  preset 1\n");
  EXPECT_THAT(run({"presets", "--bundle", "tide"}, 2, environment),
              HasSubstr("Nivlo, Moody, Paint, Empty, Straße"));
}

}  // namespace

}  // namespace nivlo::test
