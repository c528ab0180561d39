// The accelerometer of the machine, as the Industrial I/O subsystem shows it.
#pragma once

#include <memory>

#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// Finds the sensor by udev and turns its values into the device's axes by its mount matrix; the sensor under
/// a convertible's keyboard is passed over. While no stream exists nothing is watched or read, and while
/// there is no sensor nothing wakes up. A sensor that does not answer, for example because another program
/// has it, gives readings without an acceleration; none gives an error, since any may come back. Neither
/// starting nor ending a stream waits for the hardware. start() is callable from any thread, intervals below
/// a millisecond count as one.
std::unique_ptr<AccelerometerDriver> makeIIOAccelerometer();

}  // namespace nivlo
