// The wallpaper variant that suits the desktop.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "linux/desktop/appearance/ColorScheme.hpp"

namespace nivlo {

/// Follows the desktop's colour scheme. Main thread only.
class DesktopVariant {
 public:
  /// Asks the desktop, which answers while the main loop runs.
  DesktopVariant();
  DesktopVariant(const DesktopVariant&) = delete;
  DesktopVariant& operator=(const DesktopVariant&) = delete;

  /// Calls `tell` with the variant at once, and then each time that it changes; with kWallpaperVariantLight
  /// as long as the desktop does not answer.
  void observe(std::function<void(long variant)> tell);

 private:
  void tell() const;

  std::optional<bool> dark_;
  std::function<void(long)> tell_ = [](long) {};
  std::unique_ptr<ColorScheme> scheme_;
};

}  // namespace nivlo
