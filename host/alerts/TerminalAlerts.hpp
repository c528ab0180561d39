// Alerts in a terminal.
#pragma once

#include <memory>
#include <ostream>

#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Prints each alert's title, message and numbered buttons, and reads the number of the pressed one, a line
/// each, from the descriptor. The newest alert is the one that is answered. What is in a message is shown,
/// never sent: control and invisible characters appear as escapes. At the end of the input the system cancels
/// all alerts, those to come too.
std::unique_ptr<AlertPresenter> makeTerminalAlerts(std::ostream& out, int inputDescriptor);

}  // namespace nivlo
