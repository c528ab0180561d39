#include "linux/motion/iio/IIOAccelerometer.hpp"

#include <algorithm>
#include <utility>

#include "linux/motion/iio/SensorReader.hpp"

namespace nivlo {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::duration<double> kShortestInterval = 1ms;
constexpr std::chrono::duration<double> kLongestInterval = 1h;
constexpr auto kLongestWaitAtExit = 100ms;

class IIOStream : public AccelerometerStream {
 public:
  IIOStream(std::shared_ptr<SensorReader> reader, std::chrono::duration<double> interval,
            ReadingSubscription::Handler handler)
      : reader_(std::move(reader)),
        subscription_(std::make_shared<ReadingSubscription>(
            std::chrono::duration_cast<ReadingSubscription::Clock::duration>(
                std::clamp(interval, kShortestInterval, kLongestInterval)),
            std::move(handler))) {
    reader_->add(subscription_);
  }

  ~IIOStream() override {
    subscription_->end();
    reader_->remove(subscription_);
  }

 private:
  std::shared_ptr<SensorReader> reader_;
  std::shared_ptr<ReadingSubscription> subscription_;
};

class IIOAccelerometer : public AccelerometerDriver {
 public:
  /// Waits a moment for the reader's thread, which would otherwise still run while the program exits. A
  /// thread that hangs in the hardware is left behind.
  ~IIOAccelerometer() override { reader_->awaitIdle(kLongestWaitAtExit); }

  std::unique_ptr<AccelerometerStream> start(
      std::chrono::duration<double> interval,
      std::function<void(const AccelerometerReading&)> handler) override {
    return std::make_unique<IIOStream>(reader_, interval, std::move(handler));
  }

 private:
  std::shared_ptr<SensorReader> reader_ = std::make_shared<SensorReader>();
};

}  // namespace

std::unique_ptr<AccelerometerDriver> makeIIOAccelerometer() { return std::make_unique<IIOAccelerometer>(); }

}  // namespace nivlo
