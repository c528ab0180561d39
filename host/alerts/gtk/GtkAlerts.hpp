// Alerts as dialogs on the desktop.
#pragma once

#include <memory>

#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Shows each alert in a window with the desktop's look; the newest takes all input until it is answered.
/// Messages are shown as foreignText() makes them. The toolkit starts with the first alert; where there is no
/// desktop, alerts go to `fallback`.
std::unique_ptr<AlertPresenter> makeGtkAlerts(std::unique_ptr<AlertPresenter> fallback);

}  // namespace nivlo
