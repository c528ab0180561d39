// Alerts as dialogs of the desktop.
#pragma once

#include <memory>

#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Shows each alert as a window in the desktop's look; the newest takes all input until it is answered. What
/// is in a message is shown as it is: see foreignText. The toolkit starts with the first alert; on a machine
/// without a desktop the alerts go to `fallback`.
std::unique_ptr<AlertPresenter> makeGtkAlerts(std::unique_ptr<AlertPresenter> fallback);

}  // namespace nivlo
