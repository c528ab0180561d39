// A wallpaper without a camera: a drawn sea at the hour of the day.
#pragma once

#include "Painter.hpp"

#include <memory>
#include <string>
#include <vector>

#include <platform/HostContract/WallpaperClass.hpp>

namespace tide {

/// Its options have one key, kHourKey: the hour to show, as a number, or the text "now" to follow the clock.
class Tide : public nivlo::UIView, public nivlo::Wallpaper {
 public:
  static constexpr auto kHourKey = "tideHour";

  static std::string identifier() { return "Tide"; }
  static bool colorChangesSignificantly() { return true; }
  static std::vector<nivlo::NSDictionary> presetWallpaperOptions();
  static std::string descriptionForOptions(const nivlo::NSDictionary& options);
  static std::string thumbnailImageName() { return "tide-now"; }
  static std::shared_ptr<nivlo::UIImage> thumbnailImageForOptions(const nivlo::NSDictionary& options);
  static std::string representativeThumbnailImageName() { return "tide-sunrise"; }
  static std::shared_ptr<Tide> initWithFrame(nivlo::CGRect frame);

  void setWallpaperOptions(const nivlo::NSDictionary& options) override;
  void setWallpaperVariant(long variant) override;
  std::shared_ptr<nivlo::UIView> view() override { return shared_from_this(); }
  void setAnimating(bool animating) override { painter_.setRunning(animating); }

 private:
  explicit Tide(nivlo::CGRect frame);

  Painter painter_;
};

}  // namespace tide
