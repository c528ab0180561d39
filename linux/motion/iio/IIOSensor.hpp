// An accelerometer of the Industrial I/O subsystem.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "linux/motion/iio/MountMatrix.hpp"
#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// Reads one accelerometer. Its operations read from sysfs, so each may block for as long as the hardware
/// takes.
class IIOSensor {
 public:
  /// A reading, or the reason why there is none.
  struct Sample {
    CMAcceleration acceleration;  ///< along the device's axes; meaningless after an error
    int error = 0;  ///< an errno value, EPROTO for a reading that is not a number; 0 for success
  };

  /// Opens the accelerometer in this directory of sysfs, by reading its scales and offsets. `mountMatrix` is
  /// the one that udev has for it; when that is not a valid matrix, the kernel's is read too.
  IIOSensor(std::string directory, std::string_view mountMatrix);

  /// Returns whether the device in this directory is an accelerometer. Does not touch the hardware.
  static bool isAt(const std::string& directory);

  /// Reads the sensor.
  Sample sample() const;

  /// The directory in sysfs.
  const std::string& directory() const { return directory_; }

 private:
  struct Axis {
    std::string rawPath;
    double offset = 0;
    double scale = 1;  ///< raw values to m/s²
  };

  Axis readAxis(char name) const;
  double readConstant(char axis, std::string_view kind, double otherwise) const;
  MountMatrix readMountMatrix() const;

  std::string directory_;
  std::array<Axis, 3> axes_;
  MountMatrix mountMatrix_;
};

}  // namespace nivlo
