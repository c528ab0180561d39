#include "host/show/WallpaperShow.hpp"

#include <utility>

#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/UIKit/UIApplication.hpp"

namespace nivlo {

namespace {

constexpr auto kScans = "qr";
constexpr auto kCamera = "cameraPosition";

void enterBackground() {
  NSNotificationCenter::defaultCenter().postNotificationName(UIApplicationDidEnterBackgroundNotification);
}

void enterForeground() {
  auto& center = NSNotificationCenter::defaultCenter();
  center.postNotificationName(UIApplicationWillEnterForegroundNotification);
  center.postNotificationName(UIApplicationDidBecomeActiveNotification);
}

}  // namespace

std::unique_ptr<WallpaperShow> WallpaperShow::make(const WallpaperClass& wallpaperClass,
                                                   const ShowOptions& options, CGSize size,
                                                   std::shared_ptr<const CameraActivity> cameras) {
  auto wallpaper = wallpaperClass.initWithFrame({{0, 0}, size});
  if (!wallpaper) {
    return nullptr;
  }
  std::unique_ptr<WallpaperShow> show(new WallpaperShow(wallpaperClass.presetWallpaperOptions(),
                                                        std::move(wallpaper), size, std::move(cameras)));
  show->preset_ = options.preset;
  show->options_ = show->presets_.at(static_cast<std::size_t>(options.preset - 1));
  if (options.scans) {
    show->options_.setObject(*options.scans, kScans);
  }
  if (options.camera) {
    show->options_.setObject(*options.camera, kCamera);
  }
  show->wallpaper_->setWallpaperOptions(show->options_);
  return show;
}

WallpaperShow::WallpaperShow(std::vector<NSDictionary> presets, std::shared_ptr<Wallpaper> wallpaper,
                             CGSize size, std::shared_ptr<const CameraActivity> cameras)
    : presets_(std::move(presets)),
      wallpaper_(std::move(wallpaper)),
      size_(size),
      cameras_(std::move(cameras)),
      presence_({[this](bool animating) { wallpaper_->setAnimating(animating); }, enterBackground,
                 enterForeground}) {}

WallpaperShow::~WallpaperShow() { wallpaper_->setAnimating(false); }

LaidOutView WallpaperShow::view() const { return {wallpaper_->view(), size_}; }

WallpaperStatus WallpaperShow::status() const {
  return {.preset = preset_,
          .scanning = boolValue(options_.objectForKey(kScans)),
          .animating = presence_.isAnimating(),
          .visible = presence_.isVisible(),
          .paused = presence_.isPaused(),
          .inForeground = presence_.isInForeground(),
          .camera = cameras_->open};
}

void WallpaperShow::choosePreset(int number) {
  if (number < 1 || number > presetCount()) {
    return;
  }
  preset_ = number;
  options_ = presets_[static_cast<std::size_t>(number - 1)];
  wallpaper_->setWallpaperOptions(options_);
}

void WallpaperShow::setScanning(bool scans) {
  options_.setObject(scans, kScans);
  options_.setObject(cameraInUse(), kCamera);
  wallpaper_->setWallpaperOptions(options_);
}

void WallpaperShow::swapCameras() {
  options_.setObject(std::string(cameraInUse() == "front" ? "back" : "front"), kCamera);
  wallpaper_->setWallpaperOptions(options_);
}

/// A shake may have changed cameras since the options were set.
std::string WallpaperShow::cameraInUse() const {
  switch (cameras_->lastPosition) {
    case AVCaptureDevicePosition::Front:
      return "front";
    case AVCaptureDevicePosition::Back:
      return "back";
    case AVCaptureDevicePosition::Unspecified:
      break;
  }
  return isEqualToString(options_.objectForKey(kCamera), "front") ? "front" : "back";
}

}  // namespace nivlo
