// Looks for codes half as often while the battery is spared.
#pragma once

#include <memory>

#include "host/render/FramePace.hpp"
#include "host/show/LookRule.hpp"

namespace nivlo {

/// Returns a rule that doubles the time between two looks while the pace is halved.
std::shared_ptr<const LookRule> sparingTheBattery(std::shared_ptr<const FramePace> pace);

}  // namespace nivlo
