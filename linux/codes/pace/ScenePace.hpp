// Looks less often at a scene in which nothing happens.
#pragma once

#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Returns a driver whose readers skip frames of a still scene without codes, so that the given driver's
/// readers look at it five times in two seconds. They look at the usual rate again from the first frame that
/// shows a change, or after one that shows a code, until they have gone through all their ways of looking
/// about twice. Time is measured by the frames' capture times.
std::unique_ptr<CodeReaderDriver> pacedByScene(std::unique_ptr<CodeReaderDriver> readers);

}  // namespace nivlo
