// The components that stand behind the frameworks while a wallpaper is shown.
#pragma once

#include <memory>
#include <string>

#include "host/commands/RunOptions.hpp"
#include "host/render/FramePace.hpp"
#include "host/show/CameraActivity.hpp"
#include "host/show/ScanPermit.hpp"

namespace nivlo {

/// Installs the drivers that the options ask for; `cameras` follows what they open and close, they keep to
/// `pace`, and codes are looked for only while `scanPermit` permits it. Returns an error message, empty on
/// success. Drivers are installed in either case, to be removed with installDrivers({}).
std::string installDriversFor(const RunOptions& options, const std::shared_ptr<CameraActivity>& cameras,
                              const std::shared_ptr<const FramePace>& pace,
                              const std::shared_ptr<ScanPermit>& scanPermit);

}  // namespace nivlo
