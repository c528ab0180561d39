// The terminal's clipboard.
#pragma once

#include <memory>
#include <ostream>

#include "platform/drivers/PasteboardDriver.hpp"

namespace nivlo {

/// Asks the terminal behind the stream to take the text, by the OSC 52 control sequence that xterm
/// introduced; also over a remote connection. A terminal that does not know the sequence ignores it.
std::unique_ptr<PasteboardDriver> makeTerminalPasteboard(std::ostream& out);

}  // namespace nivlo
