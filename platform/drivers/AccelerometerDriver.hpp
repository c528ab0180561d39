// Where accelerometer samples come from.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace nivlo {

/// In units of g: at rest the vector's length is 1.
struct CMAcceleration {
  double x = 0;
  double y = 0;
  double z = 0;
};

struct AccelerometerReading {
  std::optional<CMAcceleration> acceleration;  ///< absent when the sensor had nothing to say
  std::optional<std::string> error;            ///< set when the sensor has failed for good
};

/// A running subscription. Destroying it ends the readings; none arrives once the destructor has returned.
class AccelerometerStream {
 public:
  virtual ~AccelerometerStream() = default;
};

class AccelerometerDriver {
 public:
  virtual ~AccelerometerDriver() = default;

  /// Delivers a reading every `interval` on a thread of the driver's own, until the stream is destroyed. A
  /// machine without a sensor delivers none, which is no error; a sensor that appears later is used. The
  /// handler must be quick and must not destroy the stream.
  virtual std::unique_ptr<AccelerometerStream> start(
      std::chrono::duration<double> interval, std::function<void(const AccelerometerReading&)> handler) = 0;
};

}  // namespace nivlo
