#include <future>
#include <numeric>

#include <gtest/gtest.h>

#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {
namespace {

TEST(SerialQueue, RunsAllItsWorkInOrderBeforeItsLastReferenceIsGone) {
  std::vector<int> ran;
  auto queue = dispatch_queue_create("test");
  EXPECT_EQ(queue->label(), "test");
  for (int i = 0; i < 1000; ++i) {
    dispatch_async(queue, [&ran, i] { ran.push_back(i); });
  }
  queue.reset();
  std::vector<int> expected(1000);
  std::iota(expected.begin(), expected.end(), 0);
  EXPECT_EQ(ran, expected);
  dispatch_async(nullptr, [] { FAIL() << "a null queue runs nothing"; });
}

TEST(SerialQueue, SurvivesLosingItsLastReferenceOnItsOwnThread) {
  std::promise<void> dropped, ranAfterwards;
  auto queue = dispatch_queue_create("test");
  auto* raw = queue.get();
  raw->async([&, held = std::move(queue)]() mutable {
    raw->async([&] { ranAfterwards.set_value(); });
    held.reset();
    dropped.set_value();
  });
  dropped.get_future().get();
  EXPECT_EQ(ranAfterwards.get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

}  // namespace
}  // namespace nivlo
