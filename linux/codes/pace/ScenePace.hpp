// Looks rarely at a scene in which nothing happens.
#pragma once

#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// The same readers, which pass by the frames of a still scene without codes and look five times in two
/// seconds. A scene that changes is looked at as often as before, beginning with the first frame that shows
/// it, until it has been looked at in all ways twice. Frames' capture times are what goes for time.
std::unique_ptr<CodeReaderDriver> atScenesPace(std::unique_ptr<CodeReaderDriver> readers);

}  // namespace nivlo
