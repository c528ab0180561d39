// The components that stand behind the frameworks while a wallpaper is shown.
#pragma once

#include <memory>
#include <string>

#include "host/commands/RunOptions.hpp"
#include "host/show/CameraActivity.hpp"

namespace nivlo {

/// Installs the drivers that the options ask for; `cameras` follows what they open and close. Returns an
/// error message, empty on success. Drivers are installed in either case, to be removed with
/// installDrivers({}).
std::string installDriversFor(const RunOptions& options, const std::shared_ptr<CameraActivity>& cameras);

}  // namespace nivlo
