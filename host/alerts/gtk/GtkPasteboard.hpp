// The desktop's clipboard.
#pragma once

#include <memory>

#include "platform/drivers/PasteboardDriver.hpp"

namespace nivlo {

/// Offers the text, byte for byte, to every program of the desktop while this one runs. The toolkit starts
/// with the first copy; on a machine without a desktop the text goes to `fallback`.
std::unique_ptr<PasteboardDriver> makeGtkPasteboard(std::unique_ptr<PasteboardDriver> fallback);

}  // namespace nivlo
