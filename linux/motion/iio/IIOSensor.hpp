// One accelerometer of the Industrial I/O subsystem.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "linux/motion/iio/MountMatrix.hpp"
#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// All operations read from sysfs, so each may block as long as the hardware does.
class IIOSensor {
 public:
  struct Sample {
    CMAcceleration acceleration;  ///< along the device's axes; meaningless on failure
    int error = 0;                ///< errno; EPROTO when the sensor said something that is no number
  };

  /// Reads what stays the same: scale, offset and, unless udev's `mountMatrix` is a valid one, the mount
  /// matrix.
  IIOSensor(std::string directory, std::string_view mountMatrix);

  /// Whether the device in this directory is an accelerometer. Asks no hardware.
  static bool isAt(const std::string& directory);

  /// Asks the sensor.
  Sample sample() const;

  /// Its directory in sysfs.
  const std::string& directory() const { return directory_; }

 private:
  struct Axis {
    std::string rawPath;
    double offset = 0;
    double scale = 1;  // to m/s²
  };

  Axis readAxis(char name) const;
  double readConstant(char axis, std::string_view kind, double otherwise) const;
  MountMatrix readMountMatrix() const;

  std::string directory_;
  std::array<Axis, 3> axes_;
  MountMatrix mountMatrix_;
};

}  // namespace nivlo
