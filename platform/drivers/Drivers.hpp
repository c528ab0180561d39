// The drivers on which the frameworks are built.
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

/// All that the frameworks need of a machine. A driver that is null stands for a machine that lacks the
/// component: the frameworks then do nothing, and return null, false or 0.
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

/// Installs the drivers of the process. To be called before any framework object is made; to replace the
/// drivers, also after all such objects are gone. No other thread may use the frameworks meanwhile.
void installDrivers(Drivers drivers);

/// The installed drivers; all null before the first installation.
Drivers& drivers();

}  // namespace nivlo
