// The terminal's clipboard.
#pragma once

#include <memory>
#include <ostream>

#include "platform/drivers/PasteboardDriver.hpp"

namespace nivlo {

/// Puts the text on the clipboard of the terminal that shows the stream, by xterm's control sequence OSC 52,
/// which also works over a remote connection. A terminal that does not know the sequence ignores it.
std::unique_ptr<PasteboardDriver> makeTerminalPasteboard(std::ostream& out);

}  // namespace nivlo
