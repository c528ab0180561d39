// The driver that reads the accelerometer.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace nivlo {

/// An acceleration along the axes of the device, in units of g (9.80665 m/s²).
///
/// The axes are those of the screen as it is held upright for reading: +x points to the right, +y to the top,
/// and +z out of the screen, towards the user. At rest a reading points away from the earth and its length is
/// 1: a device that lies on a table with its screen up reads (0, 0, 1). Both are the conventions of the Linux
/// kernel, whose mount matrices turn a sensor's own axes to these
/// (Documentation/devicetree/bindings/iio/mount-matrix.txt in its sources).
struct CMAcceleration {
  double x = 0;
  double y = 0;
  double z = 0;
};

/// A sensor's answer.
struct AccelerometerReading {
  std::optional<CMAcceleration> acceleration;  ///< absent when the sensor gave no sample this time
  std::optional<std::string> error;            ///< the cause, when the sensor has failed for good
};

/// Readings that are being delivered. Destroying it ends them; no handler is called after the destructor has
/// returned.
class AccelerometerStream {
 public:
  virtual ~AccelerometerStream() = default;
};

/// The accelerometer of the machine, whether there is one at the moment or not.
class AccelerometerDriver {
 public:
  virtual ~AccelerometerDriver() = default;

  /// Calls the handler with a reading every `interval`, on a thread of the driver's own, until the stream is
  /// destroyed. Without a sensor no reading arrives, which is not an error; a sensor that appears later is
  /// used from then on. The handler must be quick and must not destroy the stream.
  virtual std::unique_ptr<AccelerometerStream> start(
      std::chrono::duration<double> interval, std::function<void(const AccelerometerReading&)> handler) = 0;
};

}  // namespace nivlo
