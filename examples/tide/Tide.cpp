#include "Tide.hpp"

#include <utility>

#include <platform/Foundation/Dispatch.hpp>
#include <platform/Foundation/NSBundle.hpp>
#include <platform/HostContract/WallpaperOptionKeys.hpp>

namespace tide {

namespace {

constexpr double kSunriseHour = 6.6;
constexpr double kMoonlightHour = 22.5;

/// Nothing where the options follow the clock.
std::optional<double> hourIn(const nivlo::NSDictionary& options) {
  const auto* hour = std::get_if<double>(options.objectForKey(Tide::kHourKey));
  return hour ? std::optional(*hour) : std::nullopt;
}

nivlo::NSDictionary preset(nivlo::NSValue hour) {
  nivlo::NSDictionary options;
  options.setObject(std::move(hour), Tide::kHourKey);
  return options;
}

}  // namespace

std::vector<nivlo::NSDictionary> Tide::presetWallpaperOptions() {
  return {preset(std::string("now")), preset(kSunriseHour), preset(kMoonlightHour)};
}

std::string Tide::descriptionForOptions(const nivlo::NSDictionary& options) {
  const auto hour = hourIn(options);
  if (!hour) {
    return "the sea at this hour";
  }
  return *hour == kSunriseHour ? "the sea at sunrise" : "the sea by moonlight";
}

std::shared_ptr<nivlo::UIImage> Tide::thumbnailImageForOptions(const nivlo::NSDictionary& options) {
  const auto hour = hourIn(options);
  const auto* name = !hour ? "tide-now" : *hour == kSunriseHour ? "tide-sunrise" : "tide-moonlight";
  const auto bundle = nivlo::NSBundle::bundleForClass("Tide");
  const auto path = bundle ? bundle->pathForResource(name, "png") : std::nullopt;
  return path ? nivlo::UIImage::imageWithContentsOfFile(*path) : nullptr;
}

std::shared_ptr<Tide> Tide::initWithFrame(nivlo::CGRect frame) {
  return isUsableFrame(frame) ? nivlo::ownedByMainThread(std::unique_ptr<Tide>(new Tide(frame))) : nullptr;
}

Tide::Tide(nivlo::CGRect frame)
    : UIView(frame), painter_(frame.size, [layer = layer()](nivlo::VideoFramePtr picture) {
        layer->setContents(std::move(picture));
      }) {}

void Tide::setWallpaperOptions(const nivlo::NSDictionary& options) { painter_.setHour(hourIn(options)); }

void Tide::setWallpaperVariant(long variant) { painter_.setDim(variant == nivlo::kWallpaperVariantDark); }

NIVLO_EXPORT_WALLPAPER(Tide);

}  // namespace tide
