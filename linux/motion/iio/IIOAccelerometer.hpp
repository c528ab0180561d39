// The machine's accelerometer, through the kernel's Industrial I/O subsystem.
#pragma once

#include <memory>

#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// Makes a driver that finds the sensor with udev and converts its values to the device's axes with its mount
/// matrix. A sensor under a convertible's keyboard is ignored, as it does not turn with the screen.
///
/// The sensor is looked for and read only while a stream exists, and nothing wakes up while there is no
/// sensor. While a sensor does not answer, for example because another program uses it, readings come without
/// an acceleration. Readings never carry an error, because any sensor may come back. Neither starting nor
/// ending a stream waits for the hardware. start() may be called from any thread; an interval below a
/// millisecond counts as a millisecond. Never null.
std::unique_ptr<AccelerometerDriver> makeIIOAccelerometer();

}  // namespace nivlo
