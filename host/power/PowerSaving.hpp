// Fewer looks for codes while the machine saves power.
#pragma once

#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// The same readers; while the desktop's power profile is the power saver they look 2.5 times a second. Where
/// nothing tells of a power profile they look as ever. Main thread, as is the destruction.
std::unique_ptr<CodeReaderDriver> savingPower(std::unique_ptr<CodeReaderDriver> readers);

}  // namespace nivlo
