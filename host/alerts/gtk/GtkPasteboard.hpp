// The desktop's clipboard.
#pragma once

#include <memory>

#include "platform/drivers/PasteboardDriver.hpp"

namespace nivlo {

/// Offers the text, byte for byte, to every program on the desktop for as long as this program runs. The
/// toolkit starts with the first copy; where there is no desktop, the text goes to `fallback`.
std::unique_ptr<PasteboardDriver> makeGtkPasteboard(std::unique_ptr<PasteboardDriver> fallback);

}  // namespace nivlo
