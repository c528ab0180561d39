// Shared objects that are no wallpaper of this host's, one a definition.
#include <cstdint>

#include "platform/HostContract/WallpaperClass.hpp"

namespace {

constexpr std::uint32_t kOlder = nivlo::kWallpaperContractVersion - 1;

}  // namespace

extern "C" {
// An older table may be shorter and hold anything behind its first two numbers.
extern const std::uint32_t nivloWallpaperClass_Older[2] = {nivlo::kWallpaperClassMark, kOlder};
extern const std::uint32_t nivloWallpaperClass_Stranger[2] = {7, 7};
extern const nivlo::WallpaperClass nivloWallpaperClass_Alias = {nivlo::kWallpaperClassMark,
                                                                nivlo::kWallpaperContractVersion, "Other"};
}
