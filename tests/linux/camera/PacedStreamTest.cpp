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

}  // namespace
}  // namespace nivlo
