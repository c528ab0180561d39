// Looks for codes less often while the machine saves power.
#pragma once

#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Returns the same readers, but limits them to 2.5 looks a second while the desktop's power profile is the
/// power saver. Where no power profile is known they are not limited. Create and destroy it on the main
/// thread.
std::unique_ptr<CodeReaderDriver> savingPower(std::unique_ptr<CodeReaderDriver> readers);

}  // namespace nivlo
