#include <fmt/format.h>

#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "kit/UIDevice+Hardware/UIDevice+Hardware.hpp"
#include "platform/Foundation/NSBundle.hpp"

namespace nivlo {

namespace {

constexpr auto kThumbnailNameKey = "kSBUIMagicWallpaperThumbnailNameKey";
constexpr auto kScanKey = "qr";
constexpr auto kCameraKey = "cameraPosition";

NSDictionary preset(const char* thumbnail, bool scans, const char* camera) {
  return {{kThumbnailNameKey, thumbnail}, {kScanKey, scans}, {kCameraKey, camera}};
}

}  // namespace

std::string NivloWallpaper::identifier() { return "NivloWallpaper"; }

bool NivloWallpaper::colorChangesSignificantly() { return true; }

std::vector<NSDictionary> NivloWallpaper::presetWallpaperOptions() {
  return {preset("nivlowallpaper1", true, "back"), preset("nivlowallpaper2", true, "front"),
          preset("nivlowallpaper3", false, "back"), preset("nivlowallpaper4", false, "front")};
}

std::string NivloWallpaper::descriptionForOptions(const NSDictionary& options) {
  const bool front = isEqualToString(options.objectForKey(kCameraKey), "front");
  const bool scans = boolValue(options.objectForKey(kScanKey));
  return fmt::format("the {} camera, codes are {}", front ? "front" : "back", scans ? "offered" : "ignored");
}

std::string NivloWallpaper::thumbnailImageName() { return "nivlowallpaper1"; }

std::shared_ptr<UIImage> NivloWallpaper::thumbnailImageForOptions(const NSDictionary&) {
  const auto bundle = NSBundle::bundleForClass("NivloWallpaper");
  const auto path = bundle ? bundle->pathForResource("nivlowallpaper1", "png") : std::nullopt;
  return path ? UIImage::imageWithContentsOfFile(*path) : nullptr;
}

std::string NivloWallpaper::representativeThumbnailImageName() {
  return isiPhone4S(*UIDevice::currentDevice()) ? "nivlowallpaper1-hero4" : "nivlowallpaper1-hero5";
}

void NivloWallpaper::setWallpaperOptions(const NSDictionary& options) {
  setIsDetactable(boolValue(options.objectForKey(kScanKey)));
  const bool front = isEqualToString(options.objectForKey(kCameraKey), "front");
  setCameraPosition(front ? AVCaptureDevicePosition::Front : AVCaptureDevicePosition::Back);
}

void NivloWallpaper::setWallpaperVariant(long) {}

}  // namespace nivlo
