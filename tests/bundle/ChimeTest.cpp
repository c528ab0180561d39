#include <map>

#include "platform/AudioToolbox/AudioServices.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "tests/bundle/WallpaperTest.hpp"

namespace nivlo {
namespace {

/// Sounds that play until the test ends them.
struct FakeSound : SoundDriver {
  struct Playing {
    std::filesystem::path file;
    std::function<void()> completed;
  };
  struct Playback : SoundPlayback {
    std::shared_ptr<std::map<int, Playing>> sounds;
    int number = 0;
    ~Playback() override { sounds->erase(number); }
  };

  std::shared_ptr<std::map<int, Playing>> sounds = std::make_shared<std::map<int, Playing>>();
  int played = 0;

  std::unique_ptr<SoundPlayback> play(const std::filesystem::path& file,
                                      std::function<void()> completed) override {
    auto playback = std::make_unique<Playback>();
    playback->sounds = sounds;
    playback->number = ++played;
    sounds->emplace(played, Playing{file, std::move(completed)});
    return playback;
  }
  void end(int number) {
    const auto completed = sounds->at(number).completed;
    completed();
  }
};

class Chime : public WallpaperTest {
 protected:
  Chime() {
    auto made = std::make_unique<FakeSound>();
    driver = made.get();
    drivers().sound = std::move(made);
    std::string error;
    NSBundle::registerClass("NivloWallpaper", NSBundle::bundleWithPath(NIVLO_BUNDLE, &error));
    EXPECT_EQ(error, "");
  }
  ~Chime() override { NSBundle::registerClass("NivloWallpaper", nullptr); }

  static bool isAllocated(SystemSoundID sound) {
    return AudioServicesDisposeSystemSoundID(sound) == kAudioServicesNoError;
  }

  FakeSound* driver;
};

TEST_F(Chime, IsDisposedOfWithoutAShakeOrEndsNoShake) {
  view->playSound3();
  EXPECT_EQ(driver->sounds->at(1).file, std::filesystem::path(NIVLO_BUNDLE "/hourlychimebeg.m4a"));
  driver->end(1);
  EXPECT_TRUE(driver->sounds->empty());
  EXPECT_TRUE(isAllocated(view->soundFileObject())) << "disposed of the sound without a shake";
  view->playSound3();
  const auto sound = view->soundFileObject();
  view->setIsShaking(true);
  driver->end(2);
  EXPECT_FALSE(view->isShaking());
  EXPECT_FALSE(isAllocated(sound));
  EXPECT_EQ(view->soundFileObject(), sound);
}

TEST_F(Chime, EndsTheWrongOneOfTwo) {
  view->playSound3();
  const auto first = view->soundFileObject();
  view->playSound3();
  EXPECT_NE(view->soundFileObject(), first);
  EXPECT_EQ(driver->sounds->size(), 2u);
  view->setIsShaking(true);
  driver->end(1);
  EXPECT_TRUE(driver->sounds->empty()) << "the sound that the view remembers still plays";
  EXPECT_FALSE(isAllocated(view->soundFileObject()));
  EXPECT_TRUE(isAllocated(first));
}

TEST_F(Chime, TouchesAViewThatIsGone) {
  view->playSound3();
  const auto first = view->soundFileObject();
  view->playSound3();
  const auto second = view->soundFileObject();
  view->setIsShaking(true);
  view.reset();
  EXPECT_EQ(driver->sounds->size(), 2u) << "the end of the view cut a sound short";
  driver->end(1);
  driver->end(2);
  EXPECT_TRUE(isAllocated(first) && isAllocated(second));
}

}  // namespace
}  // namespace nivlo
