// Alerts in a terminal.
#pragma once

#include <memory>
#include <ostream>

#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Prints the title, the message and the numbered buttons of each alert, and reads from the descriptor, one
/// to a line, the numbers of the buttons to press. The newest alert is the one that is answered; one without
/// buttons is closed by any line, which cancels it. Control and invisible characters are printed as escapes,
/// so that a message cannot drive the terminal. The end of the input presses the cancel button, or the last
/// button when there is no cancel button; if that button is disabled, or there is none, the alert is
/// cancelled. The descriptor stays the caller's.
///
/// In the background of an interactive shell, alerts are printed and wait until the program is brought to the
/// foreground. The terminal is neither read nor flushed there, which would stop the program.
std::unique_ptr<AlertPresenter> makeTerminalAlerts(std::ostream& out, int inputDescriptor);

}  // namespace nivlo
