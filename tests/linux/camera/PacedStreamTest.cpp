// The pace of cameras that make their own frames.
#include <atomic>
#include <memory>

#include <gtest/gtest.h>

#include "linux/camera/PacedStream.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;
using Clock = PacedStream::Clock;

TEST(PacedStream, ClosingIsPromptAndNoFrameFollows) {
  std::atomic<int> frames = 0;
  auto stream = std::make_unique<PacedStream>(
      1h, [](auto) { return std::make_shared<VideoFrame>(); }, [&](VideoFramePtr) { ++frames; });
  ASSERT_TRUE(test::waitFor([&] { return frames == 1; }));
  const auto begin = Clock::now();
  stream.reset();
  EXPECT_LT(Clock::now() - begin, 5s);

  std::atomic<bool> isOpen = true;
  std::atomic<bool> cameLate = false;
  stream = std::make_unique<PacedStream>(
      50us, [](auto) { return std::make_shared<VideoFrame>(); },
      [&](VideoFramePtr) {
        ++frames;
        if (!isOpen) cameLate = true;
      });
  ASSERT_TRUE(test::waitFor([&] { return frames > 100; }));
  stream.reset();
  isOpen = false;
  const int last = frames;
  EXPECT_FALSE(test::waitFor([&] { return cameLate || frames != last; }, 50ms));
}

TEST(PacedStream, ALateFrameIsLeftOutNotCaughtUpOn) {
  std::atomic<int> asked = 0;
  std::atomic<bool> isStepEven = true;
  Clock::time_point first;
  const auto source = [&](Clock::time_point due) -> VideoFramePtr {
    if (asked == 0) first = due;
    if ((due - first) % 20ms != 0ns) isStepEven = false;
    const auto busyUntil = Clock::now() + 70ms;
    while (asked == 0 && Clock::now() < busyUntil) std::this_thread::yield();
    ++asked;
    return nullptr;
  };
  const auto begin = Clock::now();
  PacedStream stream(20ms, source, [](VideoFramePtr) { ADD_FAILURE() << "there was no frame"; });
  ASSERT_TRUE(test::waitFor([&] { return asked >= 6; }));
  EXPECT_GE(Clock::now() - begin, 140ms);
  EXPECT_TRUE(isStepEven);
}

}  // namespace
}  // namespace nivlo
