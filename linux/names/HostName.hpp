// Names of hosts in foreign scripts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nivlo {

/// Returns the name by which browsers look up a host: escapes are resolved, and labels beyond ASCII become
/// their "xn--" form, by the rules of UTS #46 without its transitional part. Other names are returned
/// unchanged. Returns nothing for a name that cannot be looked up.
std::optional<std::string> asciiHostName(std::string_view host);

}  // namespace nivlo
