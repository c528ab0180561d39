#include <future>
#include <numeric>

#include <gtest/gtest.h>

#include "platform/Foundation/Dispatch.hpp"
#include "platform/Foundation/NSNotificationCenter.hpp"

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

TEST(NotificationCenter, TellsOnlyLivingObserversOfTheNameAndTheSender) {
  NSNotificationCenter center;
  std::vector<std::string> told;
  const auto tell = [&told](std::string name) {
    return [&told, name = std::move(name)](const NSNotification& n) { told.push_back(name + n.name); };
  };
  auto first = std::make_shared<int>(), second = std::make_shared<int>();
  const int sender = 0, stranger = 0;
  center.addObserver(first, tell("first "), "A");
  center.addObserver(second, tell("second "), "A", &sender);
  center.addObserver(first, tell("first "), "B");
  center.postNotificationName("A", &sender);
  center.postNotificationName("A", &stranger);
  EXPECT_EQ(told, (std::vector<std::string>{"first A", "second A", "first A"}));
  told.clear();
  second.reset();
  center.removeObserver(nullptr);
  center.postNotificationName("A", &sender);
  center.removeObserver(first.get());
  center.postNotificationName("B");
  EXPECT_EQ(told, (std::vector<std::string>{"first A"}));
}

TEST(NotificationCenter, TakesChangesFromWithinItsHandlers) {
  NSNotificationCenter center;
  auto changer = std::make_shared<int>(), removed = std::make_shared<int>(),
       dropped = std::make_shared<int>();
  int calls = 0, callsOfTheRemoved = 0, callsOfTheDropped = 0;
  center.addObserver(
      changer,
      [&](const NSNotification&) {
        ++calls;
        center.addObserver(
            changer, [&](const NSNotification&) { ++calls; }, "late");
        center.removeObserver(removed.get());
        dropped.reset();
        center.postNotificationName("late");
      },
      "A");
  center.addObserver(
      removed, [&](const NSNotification&) { ++callsOfTheRemoved; }, "A");
  center.addObserver(
      dropped, [&](const NSNotification&) { ++callsOfTheDropped; }, "A");
  center.postNotificationName("A");
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(callsOfTheRemoved, 0) << "removed before its turn came";
  EXPECT_EQ(callsOfTheDropped, 0) << "gone before its turn came";
}

}  // namespace
}  // namespace nivlo
