// Finds the machine's accelerometer, and finds it again when it was gone.
#pragma once

#include <optional>
#include <string>

#include <gudev/gudev.h>

#include "linux/handles/Owned.hpp"
#include "linux/motion/iio/IIOSensor.hpp"

namespace nivlo {

/// Holds the accelerometer that turns with the screen, while there is one. It follows sensors that come and
/// go as the GLib context runs that was the thread's default one at the construction. To be used on that
/// thread only.
class SensorWatch {
 public:
  SensorWatch();
  ~SensorWatch();
  SensorWatch(const SensorWatch&) = delete;
  SensorWatch& operator=(const SensorWatch&) = delete;

  /// The sensor; null while there is none. Valid until the context runs again or giveUpSensor() is called.
  const IIOSensor* sensor() const { return sensor_ ? &*sensor_ : nullptr; }

  /// Drops a sensor that has turned out to be gone, even if udev has not said so yet, and takes another one
  /// if there is any.
  void giveUpSensor();

 private:
  static void onEvent(GUdevClient* client, gchar* action, GUdevDevice* device, gpointer data);
  void take(GUdevDevice* device);

  Owned<GUdevClient, g_object_unref> client_;
  std::optional<IIOSensor> sensor_;
};

}  // namespace nivlo
