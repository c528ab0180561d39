#include "host/show/WallpaperShow.hpp"

#include <algorithm>
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
  show->change({options.preset.value_or(1), options.scans, options.camera});
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

void WallpaperShow::frameShown() {
  const auto pictures = placedPictures(view(), size_);
  const auto newest = std::max_element(pictures.begin(), pictures.end(), [](const auto& a, const auto& b) {
    return a.frame.picture->captureTime < b.frame.picture->captureTime;
  });
  if (newest != pictures.end()) {
    frames_.shown(newest->frame.picture->captureTime);
  }
}

WallpaperStatus WallpaperShow::status() const {
  return {.preset = preset_,
          .scanning = boolValue(options_.objectForKey(kScans)),
          .animating = presence_.isAnimating(),
          .visible = presence_.isVisible(),
          .paused = presence_.isPaused(),
          .inForeground = presence_.isInForeground(),
          .camera = cameras_->open(),
          .frames = frames_};
}

void WallpaperShow::change(const ShowOptions& changes) {
  options_.setObject(cameraInUse(), kCamera);
  if (changes.preset) {
    preset_ = *changes.preset;
    options_ = presets_.at(static_cast<std::size_t>(preset_ - 1));
  }
  if (changes.scans) {
    options_.setObject(*changes.scans, kScans);
  }
  if (changes.camera) {
    options_.setObject(*changes.camera, kCamera);
  }
  openingsBefore_ = cameras_->openings();
  wallpaper_->setWallpaperOptions(options_);
}

void WallpaperShow::swapCameras() { change({.camera = cameraInUse() == "front" ? "back" : "front"}); }

/// A shake may have changed cameras since the options were set; while paused, no camera has followed them.
std::string WallpaperShow::cameraInUse() const {
  const bool opened = cameras_->openings() != openingsBefore_;
  switch (opened ? cameras_->lastPosition() : AVCaptureDevicePosition::Unspecified) {
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
