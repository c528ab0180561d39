// Opens links with the programs that the desktop has registered for them.
#pragma once

#include <memory>

#include "platform/drivers/URLOpener.hpp"

namespace nivlo {

/// A code in the street must not run scripts or reach into the machine, so links that name files, scripts or
/// in-page data are never opened, whoever is registered for them: about, admin, blob, data, file, javascript,
/// vbscript, view-source and the desktop's own computer, network, recent, resource and trash.
std::unique_ptr<URLOpener> makeDesktopURLOpener();

}  // namespace nivlo
