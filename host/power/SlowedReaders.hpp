// Looks for codes half as often while the battery is spared.
#pragma once

#include <memory>

#include "host/render/FramePace.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Returns the same readers, whose interval between looks is twice as long while the pace is halved.
std::unique_ptr<CodeReaderDriver> slowed(std::unique_ptr<CodeReaderDriver> readers,
                                         std::shared_ptr<const FramePace> pace);

}  // namespace nivlo
