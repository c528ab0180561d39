// The set of drivers that stands behind the frameworks.
#pragma once

#include <memory>

#include "platform/drivers/AccelerometerDriver.hpp"
#include "platform/drivers/AlertPresenter.hpp"
#include "platform/drivers/CameraDriver.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"
#include "platform/drivers/DeviceIdentity.hpp"
#include "platform/drivers/LogSink.hpp"
#include "platform/drivers/MainQueueDriver.hpp"
#include "platform/drivers/PasteboardDriver.hpp"
#include "platform/drivers/SoundDriver.hpp"
#include "platform/drivers/URLOpener.hpp"

namespace nivlo {

/// An absent driver is a machine without that component: the frameworks then do nothing and answer null,
/// false or 0.
struct Drivers {
  std::unique_ptr<LogSink> logSink;
  std::unique_ptr<MainQueueDriver> mainQueue;
  std::unique_ptr<CameraDriver> cameras;
  std::unique_ptr<CodeReaderDriver> codeReader;
  std::unique_ptr<AccelerometerDriver> accelerometer;
  std::unique_ptr<AlertPresenter> alerts;
  std::unique_ptr<PasteboardDriver> pasteboard;
  std::unique_ptr<URLOpener> urls;
  std::unique_ptr<SoundDriver> sound;
  std::unique_ptr<DeviceIdentity> device;
};

/// Installs the drivers for the whole process, before any framework object exists. Installing again replaces
/// them, once every object that used the earlier ones is gone. Not thread-safe.
void installDrivers(Drivers drivers);

/// The installed drivers; all absent before the first installation.
Drivers& drivers();

}  // namespace nivlo
