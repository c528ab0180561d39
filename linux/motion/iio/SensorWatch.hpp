// Finds the machine's accelerometer, and finds it again.
#pragma once

#include <optional>
#include <string>

#include <gudev/gudev.h>

#include "linux/handles/Owned.hpp"
#include "linux/motion/iio/IIOSensor.hpp"

namespace nivlo {

/// Holds the accelerometer that turns with the screen, while there is one. Sensors come and go while the GLib
/// context that was the thread's default at the construction runs. To be used on that thread only.
class SensorWatch {
 public:
  SensorWatch();
  ~SensorWatch();
  SensorWatch(const SensorWatch&) = delete;
  SensorWatch& operator=(const SensorWatch&) = delete;

  /// Null while there is none. Valid until the context runs again or the sensor is given up.
  const IIOSensor* sensor() const { return sensor_ ? &*sensor_ : nullptr; }

  /// The sensor does not exist any more, whatever udev says so far: takes another, if there is one.
  void giveUpSensor();

 private:
  static void onEvent(GUdevClient* client, gchar* action, GUdevDevice* device, gpointer data);
  void take(GUdevDevice* device);

  Owned<GUdevClient, g_object_unref> client_;
  std::optional<IIOSensor> sensor_;
};

}  // namespace nivlo
