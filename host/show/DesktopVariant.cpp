#include "host/show/DesktopVariant.hpp"

#include <chrono>
#include <utility>

#include <glib.h>

#include "host/loop/EventSource.hpp"
#include "platform/HostContract/WallpaperOptionKeys.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kPatience{100};

}  // namespace

DesktopVariant::DesktopVariant()
    : scheme_(makeColorScheme([this](bool dark) {
        dark_ = dark;
        tell();
      })) {}

void DesktopVariant::await() {
  bool late = false;
  const auto timeout = EventSource::onTimeout(kPatience, [&late] { late = true; });
  while (!dark_ && !late) {
    g_main_context_iteration(nullptr, TRUE);
  }
}

void DesktopVariant::observe(std::function<void(long)> tell) {
  tell_ = std::move(tell);
  this->tell();
}

void DesktopVariant::tell() const {
  tell_(dark_.value_or(false) ? kWallpaperVariantDark : kWallpaperVariantLight);
}

}  // namespace nivlo
