// Looks for codes less often while the machine saves power.
#pragma once

#include <memory>

#include "host/show/LookRule.hpp"

namespace nivlo {

/// Returns a rule that allows 2.5 looks a second while the desktop's power profile is the power saver. Where
/// no power profile is known it limits nothing. Main thread only; the rule itself may be held by any thread.
std::shared_ptr<const LookRule> savingPower();

}  // namespace nivlo
