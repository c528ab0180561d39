// The outputs that there are now.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace nivlo {

/// Asks the display that the environment names for the names of its outputs, as --output takes them. Nothing
/// if there is no display, if it does not answer or if it does not tell names. Main thread only.
std::optional<std::vector<std::string>> presentOutputs();

}  // namespace nivlo
