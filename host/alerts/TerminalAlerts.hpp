// Alerts in a terminal.
#pragma once

#include <memory>
#include <ostream>

#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Prints the title, the message and the numbered buttons of each alert, and reads from the descriptor, one
/// to a line, the numbers of the buttons to press. The newest alert is the one that is answered. Control and
/// invisible characters are printed as escapes, so that a message cannot drive the terminal. When the input
/// ends, all alerts are cancelled, and so is every later one. The descriptor stays the caller's.
std::unique_ptr<AlertPresenter> makeTerminalAlerts(std::ostream& out, int inputDescriptor);

}  // namespace nivlo
