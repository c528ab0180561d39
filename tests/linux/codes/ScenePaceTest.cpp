#include <random>

#include <gmock/gmock.h>

#include "linux/codes/pace/ScenePace.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/linux/codes/CodePictures.hpp"

namespace nivlo::test {

namespace {

using namespace std::chrono_literals;

TEST(ScenePace, RestsBeforeANoisyStillSceneAndWakesForASmallLabelOrAKnownCode) {
  auto made = std::make_unique<FakeCodeReader>();
  FakeCodeReader& readers = *made;
  const auto driver = atScenesPace(std::move(made));
  const auto reader = driver->makeReader();
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, 8);
  std::vector<GreyPicture> frames(5, greyPicture(1280, 720, 120));
  for (GreyPicture& frame : frames) {
    for (auto& pixel : frame.pixels) {
      pixel = static_cast<std::uint8_t>(pixel + noise(random));
    }
  }
  std::chrono::steady_clock::time_point now;
  // As the output does: a look no earlier than the reader's interval after the last.
  const auto looksIn = [&](std::chrono::milliseconds time) {
    const int before = readers.looks;
    for (const auto end = now + time; now < end; now += reader->lookInterval()) {
      VideoFrame frame = frameOf(frames[random() % frames.size()]);
      frame.captureTime = now;
      reader->look(frame);
    }
    return readers.looks - before;
  };
  EXPECT_EQ(looksIn(2s), 20) << "a new scene is looked at in all ways";
  EXPECT_THAT(looksIn(2s), testing::AllOf(testing::Ge(5), testing::Le(6)));
  for (GreyPicture& frame : frames) {
    place(frame, greyPicture(60, 25, 40), 600, 300);
  }
  EXPECT_EQ(looksIn(100ms), 1) << "the next frame is looked at";
  EXPECT_EQ(looksIn(1s), 10);
  looksIn(2s);
  readers.putInView({{"org.iso.QRCode", "in view", {}}});
  looksIn(500ms);
  EXPECT_EQ(looksIn(3s), 30) << "a code is in view";
}

}  // namespace

}  // namespace nivlo::test
