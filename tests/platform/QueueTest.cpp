#include <future>

#include <gtest/gtest.h>

#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {
namespace {

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
