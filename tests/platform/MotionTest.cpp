#include <gtest/gtest.h>

#include "platform/CoreMotion/CMMotionManager.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo {
namespace {

TEST(Motion, StartsNoHandlerOnceItIsStoppedThoughASampleWaits) {
  FakeMachine machine;
  const auto manager = CMMotionManager::init();
  const auto queue = NSOperationQueue::init();
  std::atomic<int> handled{0}, drained{0};
  std::atomic<bool> release{false};
  manager->startAccelerometerUpdatesToQueue(queue, [&](const auto*, const auto*) { ++handled; });
  machine.accelerometer.send(1, 2, 3);
  ASSERT_TRUE(machine.mainQueue.waitUntil([&] { return handled == 1; }));
  queue->addOperation([&] { release.wait(false); });
  machine.accelerometer.send(4, 5, 6);
  manager->stopAccelerometerUpdates();
  queue->addOperation([&] { ++drained; });
  release = true;
  release.notify_one();
  ASSERT_TRUE(machine.mainQueue.waitUntil([&] { return drained == 1; }));
  EXPECT_EQ(handled, 1);
  EXPECT_FALSE(machine.accelerometer.isListenedTo());
}

}  // namespace
}  // namespace nivlo
