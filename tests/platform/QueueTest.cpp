#include <array>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>

#include "platform/Foundation/Dispatch.hpp"
#include "platform/Foundation/NSOperationQueue.hpp"
#include "platform/Foundation/NSThread.hpp"

namespace nivlo {
namespace {

using Names = std::pair<std::optional<std::string>, std::string>;

/// The calling thread's name, and its name for the system.
Names threadNames() {
  std::array<char, 16> name{};
  pthread_getname_np(pthread_self(), name.data(), name.size());
  return {NSThread::currentThread().name(), name.data()};
}

TEST(Thread, LosesItsNameOrCutsItWithinACharacter) {
  const std::vector<std::pair<std::string, std::string>> names{{"motion", "motion"},
                                                               {"exactly fifteen", "exactly fifteen"},
                                                               {"sixteen letters.", "sixteen letters"},
                                                               {"fourteen bytesé", "fourteen bytes"},
                                                               {"", ""}};
  for (const auto& [name, shown] : names) {
    std::jthread([&, name = name, shown = shown] {
      EXPECT_EQ(threadNames().first, std::nullopt);
      NSThread::currentThread().setName(name);
      EXPECT_EQ(threadNames(), Names(name, shown));
    }).join();
  }
}

TEST(Thread, RenamesTheProgram) {
  const auto program = threadNames().second;
  NSThread::currentThread().setName("first");
  EXPECT_EQ(threadNames(), Names("first", program));
  NSThread::currentThread().setName(std::nullopt);
}

TEST(Thread, OfAQueueHasNoName) {
  std::promise<Names> ofQueue, ofOperations;
  const auto queue = dispatch_queue_create("com.example.codes");
  dispatch_async(queue, [&] { ofQueue.set_value(threadNames()); });
  EXPECT_EQ(ofQueue.get_future().get(), Names("com.example.codes", "com.example.cod"));
  const auto operations = NSOperationQueue::init();
  operations->addOperation([&] { ofOperations.set_value(threadNames()); });
  EXPECT_EQ(ofOperations.get_future().get(), Names("operations", "operations"));
}

TEST(SerialQueue, CannotBeDroppedOnItsOwnThread) {
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
