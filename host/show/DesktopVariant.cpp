#include "host/show/DesktopVariant.hpp"

#include <utility>

#include "platform/HostContract/WallpaperOptionKeys.hpp"

namespace nivlo {

DesktopVariant::DesktopVariant()
    : scheme_(makeColorScheme([this](bool dark) {
        dark_ = dark;
        tell();
      })) {}

void DesktopVariant::observe(std::function<void(long)> tell) {
  tell_ = std::move(tell);
  this->tell();
}

void DesktopVariant::tell() const {
  tell_(dark_.value_or(false) ? kWallpaperVariantDark : kWallpaperVariantLight);
}

}  // namespace nivlo
