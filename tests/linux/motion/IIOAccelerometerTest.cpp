// The IIO accelerometer, with devices that umockdev mocks.
#include <atomic>
#include <filesystem>
#include <map>
#include <mutex>
#include <vector>

#include <gmock/gmock.h>
#include <umockdev.h>

#include "linux/handles/Owned.hpp"
#include "linux/motion/iio/IIOAccelerometer.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;
using Texts = std::map<std::string, std::string>;

constexpr auto kInterval = 10ms;

/// Starts a stream and keeps its last reading.
class Listener {
 public:
  explicit Listener(AccelerometerDriver& driver)
      : stream_(driver.start(kInterval, [this](const AccelerometerReading& reading) {
          const std::lock_guard lock(mutex_);
          last_ = reading;
          ++count_;
        })) {}

  int count() const { return count_; }
  void stop() { stream_.reset(); }

  bool hears(double x, double y, double z) const {
    return test::waitFor([&] {
      const std::lock_guard lock(mutex_);
      const auto close = [](double one, double other) { return std::abs(one - other) < 1e-6; };
      return last_.acceleration && close(last_.acceleration->x, x) && close(last_.acceleration->y, y) &&
             close(last_.acceleration->z, z);
    });
  }

  bool hearsAnEmptyReading() const {
    return test::waitFor([&] {
      const std::lock_guard lock(mutex_);
      return count_ > 0 && !last_.acceleration && !last_.error;
    });
  }

 private:
  mutable std::mutex mutex_;
  AccelerometerReading last_;
  std::atomic<int> count_{0};
  std::unique_ptr<AccelerometerStream> stream_;
};

class IIOAccelerometerTest : public testing::Test {
 protected:
  /// Adds a sensor that measures -1 g along x, 0.5 g along y and 2 g along z, unless the attributes say
  /// otherwise.
  std::string add(const std::string& name, const Texts& attributes = {}, const Texts& properties = {}) {
    const char* none[] = {nullptr};
    const Owned<gchar, g_free> device(umockdev_testbed_add_devicev(
        testbed_.get(), "iio", name.c_str(), nullptr, const_cast<gchar**>(none), const_cast<gchar**>(none)));
    auto all = attributes;
    all.merge(Texts{{"in_accel_x_raw", "-100"},
                    {"in_accel_y_raw", "50"},
                    {"in_accel_z_raw", "200"},
                    {"in_accel_scale", "0.0980665"}});
    for (const auto& [attribute, value] : all) {
      set(device.get(), attribute, value);
    }
    for (const auto& [property, value] : properties) {
      umockdev_testbed_set_property(testbed_.get(), device.get(), property.c_str(), value.c_str());
    }
    return device.get();
  }
  void set(const std::string& device, const std::string& attribute, const std::string& value) {
    umockdev_testbed_set_attribute(testbed_.get(), device.c_str(), attribute.c_str(), (value + "\n").c_str());
  }
  void announce(const std::string& device, const char* action) {
    umockdev_testbed_uevent(testbed_.get(), device.c_str(), action);
  }
  void remove(const std::string& device) { umockdev_testbed_remove_device(testbed_.get(), device.c_str()); }

  /// The real file behind a mocked attribute.
  std::filesystem::path file(const std::string& device, const std::string& attribute) const {
    const Owned<gchar, g_free> root(umockdev_testbed_get_root_dir(testbed_.get()));
    return std::string(root.get()) + device + "/" + attribute;
  }

  LoggingMachine machine_;
  Owned<UMockdevTestbed, g_object_unref> testbed_{umockdev_testbed_new()};
  std::unique_ptr<AccelerometerDriver> driver_ = makeIIOAccelerometer();
};

TEST_F(IIOAccelerometerTest, ReadsTheWrongSensorOrAlongTheWrongAxes) {
  add("iio:device0", {{"in_accel_x_raw", "900"}}, {{"ACCEL_LOCATION", "base"}});
  add("iio:device1", {{"in_accel_x_raw", "800"}, {"label", "accel-base"}});
  const std::string quarterTurn = "0, 1, 0; -1, 0, 0; 0, 0, 1";
  const Texts turned{{"ACCEL_MOUNT_MATRIX", quarterTurn}};
  const struct {
    Texts attributes, properties;
    CMAcceleration expected;
  } cases[] = {
      {{}, {}, {-1, 0.5, 2}},
      {{{"in_accel_x_scale", "0.196133"}, {"in_accel_offset", "100"}, {"in_accel_z_offset", "-300"}},
       {},
       {0, 1.5, -1}},
      {{}, turned, {0.5, 1, 2}},
      {{{"mount_matrix", "1, 0, 0; 0, 1, 0; 0, 0, -1"}}, turned, {0.5, 1, 2}},
      {{{"in_accel_mount_matrix", quarterTurn}, {"mount_matrix", "1, 0, 0; 0, 1, 0; 0, 0, -1"}},
       {{"ACCEL_MOUNT_MATRIX", "0, 0, 0; 0, 1, 0; 0, 0, 1"}},
       {0.5, 1, 2}},
      {{{"in_mount_matrix", "1, 0, 0; 0, 1, 0"}, {"mount_matrix", "+0.5,0,0;0,1,0;0,0,1e0"}},
       {},
       {-0.5, 0.5, 2}},
  };
  for (const auto& [attributes, properties, expected] : cases) {
    SCOPED_TRACE(testing::PrintToString(attributes));
    driver_ = makeIIOAccelerometer();
    const auto device = add("iio:device2", attributes, properties);
    Listener listener(*driver_);
    EXPECT_TRUE(listener.hears(expected.x, expected.y, expected.z));
    listener.stop();
    remove(device);
  }
}

TEST_F(IIOAccelerometerTest, MissesASensorThatComesOrGoes) {
  const auto light = add("iio:device7");
  std::filesystem::remove(file(light, "in_accel_x_raw"));
  Listener listener(*driver_);
  Listener slow(*driver_);
  announce(light, "change");
  auto device = add("iio:device0");
  announce(device, "add");
  announce(device, "add");
  ASSERT_TRUE(listener.hears(-1, 0.5, 2));
  set(device, "in_accel_y_raw", "300");
  ASSERT_TRUE(listener.hears(-1, 3, 2));

  announce(device, "remove");
  remove(device);
  device = add("iio:device0", {{"in_accel_scale", "0.196133"}});
  announce(device, "add");
  ASSERT_TRUE(listener.hears(-2, 1, 4)) << "the new device is read with the scale of the old one";

  remove(device);
  const auto another = add("iio:device2", {{"in_accel_x_raw", "700"}});
  announce(another, "add");
  EXPECT_TRUE(listener.hears(7, 0.5, 2)) << "a sensor that was removed without an event is kept";
  listener.stop();
  const int heard = listener.count();
  const int heardBySlow = slow.count();
  EXPECT_TRUE(test::waitFor([&] { return slow.count() > heardBySlow + 2; }));
  EXPECT_EQ(listener.count(), heard);
  EXPECT_EQ(machine_.log.count(), 0);
}

TEST_F(IIOAccelerometerTest, ReportsABrokenSensorTwiceOrGivesItUp) {
  const auto device = add("iio:device0");
  Listener listener(*driver_);
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(listener.hears(-1, 0.5, 2));
    set(device, "in_accel_z_raw", "unknown");
    EXPECT_TRUE(listener.hearsAnEmptyReading());
    set(device, "in_accel_z_raw", "200");
  }
  EXPECT_EQ(machine_.log.count(), 1);
}

}  // namespace
}  // namespace nivlo
