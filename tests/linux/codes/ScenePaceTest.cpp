#include <chrono>
#include <cstdint>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "linux/codes/pace/ScenePace.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/linux/codes/CodePictures.hpp"

namespace nivlo::test {

namespace {

using namespace std::chrono_literals;

TEST(ScenePace, LooksLessOftenAtANoisyStillSceneUntilASmallLabelOrACodeAppears) {
  auto made = std::make_unique<FakeCodeReader>();
  FakeCodeReader& readers = *made;
  const auto driver = pacedByScene(std::move(made));
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
  // Like the metadata output, waits at least the reader's interval between looks.
  const auto looksIn = [&](std::chrono::milliseconds time) {
    const int before = readers.looks;
    for (const auto end = now + time; now < end; now += reader->lookInterval()) {
      VideoFrame frame = frameOf(frames[random() % frames.size()]);
      frame.captureTime = now;
      reader->look(frame);
    }
    return readers.looks - before;
  };
  EXPECT_EQ(looksIn(2s), 20) << "two rounds of looks at a new scene";
  EXPECT_THAT(looksIn(2s), testing::AllOf(testing::Ge(5), testing::Le(6)));
  for (GreyPicture& frame : frames) {
    place(frame, greyPicture(60, 25, 40), 600, 300);
  }
  EXPECT_EQ(looksIn(100ms), 1) << "the first frame that shows the change";
  EXPECT_EQ(looksIn(1s), 10);
  looksIn(2s);
  readers.putInView({{"org.iso.QRCode", "in view", {}}});
  looksIn(500ms);
  EXPECT_EQ(looksIn(3s), 30) << "a code is in view";
}

}  // namespace

}  // namespace nivlo::test
