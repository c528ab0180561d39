#include "linux/motion/iio/SensorWatch.hpp"

#include <array>
#include <string_view>
#include <utility>

#include "linux/motion/iio/SysfsAttribute.hpp"

namespace nivlo {

namespace {

using Device = Owned<GUdevDevice, g_object_unref>;

constexpr std::array<const gchar*, 2> kSubsystems{"iio", nullptr};

std::string_view property(GUdevDevice* device, const char* name) {
  const char* value = g_udev_device_get_property(device, name);
  return value ? value : "";
}

/// Returns whether this is the second accelerometer of a convertible, under its keyboard. Newer kernels label
/// it.
bool isInBase(GUdevDevice* device, const std::string& directory) {
  return property(device, "ACCEL_LOCATION") == "base" ||
         readAttribute(directory + "/label").text.starts_with("accel-base");
}

}  // namespace

SensorWatch::SensorWatch() : client_(g_udev_client_new(kSubsystems.data())) {
  g_signal_connect(client_.get(), "uevent", G_CALLBACK(onEvent), this);
  giveUpSensor();
}

SensorWatch::~SensorWatch() { g_signal_handlers_disconnect_by_data(client_.get(), this); }

void SensorWatch::giveUpSensor() {
  const auto former = sensor_ ? sensor_->directory() : std::string();
  sensor_.reset();
  const Owned<GList, g_list_free> devices(g_udev_client_query_by_subsystem(client_.get(), kSubsystems[0]));
  for (const GList* entry = devices.get(); entry; entry = entry->next) {
    const Device device(G_UDEV_DEVICE(entry->data));
    if (former != g_udev_device_get_sysfs_path(device.get())) {
      take(device.get());
    }
  }
}

void SensorWatch::onEvent(GUdevClient*, gchar* action, GUdevDevice* device, gpointer data) {
  auto& self = *static_cast<SensorWatch*>(data);
  if (std::string_view(action) != "remove") {
    self.take(device);
  } else if (self.sensor_ && self.sensor_->directory() == g_udev_device_get_sysfs_path(device)) {
    self.giveUpSensor();
  }
}

void SensorWatch::take(GUdevDevice* device) {
  if (sensor_) {
    return;
  }
  const std::string directory = g_udev_device_get_sysfs_path(device);
  if (IIOSensor::isAt(directory) && !isInBase(device, directory)) {
    sensor_.emplace(directory, property(device, "ACCEL_MOUNT_MATRIX"));
  }
}

}  // namespace nivlo
