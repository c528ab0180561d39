#include "host/show/WallpaperShow.hpp"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

void enterBackground() {
  NSNotificationCenter::defaultCenter().postNotificationName(UIApplicationDidEnterBackgroundNotification);
}

void enterForeground() {
  auto& center = NSNotificationCenter::defaultCenter();
  center.postNotificationName(UIApplicationWillEnterForegroundNotification);
  center.postNotificationName(UIApplicationDidBecomeActiveNotification);
}

bool thereIsACamera(AVCaptureDevicePosition position) {
  const auto known = drivers().cameras ? drivers().cameras->cameras() : std::vector<CameraInfo>();
  return std::ranges::count(known, position, &CameraInfo::position) > 0;
}

}  // namespace

const char* inWords(CameraState state) {
  switch (state) {
    case CameraState::Waiting:
      return "waiting";
    case CameraState::Unplugged:
      return "unplugged";
    case CameraState::Delivering:
      break;
  }
  return "delivering";
}

std::unique_ptr<WallpaperShow> WallpaperShow::make(std::shared_ptr<const WallpaperBundle> bundle,
                                                   const ShowOptions& options, CGSize size,
                                                   std::shared_ptr<const CameraActivity> cameras,
                                                   std::shared_ptr<ScanPermit> scanPermit,
                                                   std::string* error) {
  std::unique_ptr<WallpaperShow> show(new WallpaperShow(size, std::move(cameras), std::move(scanPermit)));
  *error = show->replace(std::move(bundle), options);
  return error->empty() ? std::move(show) : nullptr;
}

WallpaperShow::WallpaperShow(CGSize size, std::shared_ptr<const CameraActivity> cameras,
                             std::shared_ptr<ScanPermit> scanPermit)
    : size_(size),
      stage_(UIView::initWithFrame({{0, 0}, size})),
      cameras_(std::move(cameras)),
      scanPermit_(std::move(scanPermit)),
      presence_({[this](bool animating) { wallpaper_->setAnimating(animating); }, enterBackground,
                 enterForeground, [this] { changed_(); }}) {}

WallpaperShow::~WallpaperShow() { stop(); }

std::string WallpaperShow::replace(std::shared_ptr<const WallpaperBundle> bundle,
                                   const ShowOptions& options) {
  std::string error = whyImpossible(options, *bundle);
  auto wallpaper = error.empty() ? bundle->build(size_, &error) : nullptr;
  if (!wallpaper) {
    return error;
  }
  stop();
  start(std::move(bundle), std::move(wallpaper), options);
  return "";
}

std::string WallpaperShow::rebuild() {
  ShowOptions same{.preset = preset_, .scans = status().scanning, .camera = {}};
  if (bundle_->understands(kCameraPositionKey)) {
    same.camera = cameraInUse();
  }
  return replace(bundle_, same);
}

void WallpaperShow::start(std::shared_ptr<const WallpaperBundle> bundle, std::shared_ptr<Wallpaper> wallpaper,
                          const ShowOptions& options) {
  bundle_ = std::move(bundle);
  wallpaper_ = std::move(wallpaper);
  frames_ = {};
  wallpaper_->setWallpaperVariant(variant_);
  apply({options.preset.value_or(1), options.scans, options.camera});
  stage_->addSubview(wallpaper_->view());
  if (presence_.isAnimating()) {
    wallpaper_->setAnimating(true);
  }
  // Has the surface draw even where the new wallpaper's pictures were all there before.
  stage_->layer()->setContents(nullptr);
}

void WallpaperShow::stop() {
  if (!wallpaper_) {
    return;
  }
  wallpaper_->setAnimating(false);
  wallpaper_->view()->removeFromSuperview();
  wallpaper_.reset();
  if (auto& alerts = drivers().alerts) {
    alerts->cancelAll();
  }
}

void WallpaperShow::frameShown() {
  const auto pictures = placedPictures(view(), size_);
  const auto newest = std::max_element(pictures.begin(), pictures.end(), [](const auto& a, const auto& b) {
    return a.frame.picture->captureTime < b.frame.picture->captureTime;
  });
  if (newest != pictures.end()) {
    frames_.shown(newest->frame.picture->captureTime);
  }
  if (const bool can = canScan(); can != std::exchange(couldScan_, can)) {
    changed_();
  }
}

WallpaperStatus WallpaperShow::status() const {
  WallpaperStatus status{.preset = preset_,
                         .takesCamera = bundle_->understands(kCameraPositionKey),
                         .animating = presence_.isAnimating(),
                         .visible = presence_.isVisible(),
                         .awaited = presence_.awaited(),
                         .paused = presence_.isPaused(),
                         .batterySaving = presence_.batterySaving(),
                         .inForeground = presence_.isInForeground(),
                         .frames = frames_};
  if (bundle_->understands(kScansCodesKey)) {
    status.scanning = boolValue(options_.objectForKey(kScansCodesKey));
    status.canScan = canScan();
  }
  if (const auto camera = cameras_->open()) {
    status.camera = camera->info;
    status.cameraState = stateOf(*camera);
  }
  return status;
}

bool WallpaperShow::canScan() const { return drivers().codeReader && drivers().codeReader->canRead(); }

CameraState WallpaperShow::stateOf(const ObservedCamera& camera) const {
  const auto known = drivers().cameras ? drivers().cameras->cameras() : std::vector<CameraInfo>();
  const bool isThere = std::ranges::any_of(
      known, [&](const CameraInfo& info) { return info.uniqueID == camera.info.uniqueID && info.connected; });
  if (!isThere) {
    return CameraState::Unplugged;
  }
  return camera.pulse && camera.pulse->isAlive() ? CameraState::Delivering : CameraState::Waiting;
}

std::string WallpaperShow::change(const ShowOptions& changes) {
  auto error = whyImpossible(changes, *bundle_);
  if (error.empty()) {
    apply(changes);
  }
  return error;
}

void WallpaperShow::apply(const ShowOptions& changes) {
  if (bundle_->understands(kCameraPositionKey)) {
    options_.setObject(cameraInUse(), kCameraPositionKey);
  }
  if (changes.preset) {
    preset_ = *changes.preset;
    options_ = bundle_->preset(preset_).options;
  }
  if (changes.scans) {
    options_.setObject(*changes.scans, kScansCodesKey);
  }
  if (changes.camera) {
    options_.setObject(*changes.camera, kCameraPositionKey);
  }
  openingsBefore_ = cameras_->openings();
  scanPermit_->setScanning(status().scanning.value_or(true));
  wallpaper_->setWallpaperOptions(options_);
  changed_();
}

std::string WallpaperShow::swapCameras() {
  const std::string current = cameraInUse();
  const bool toBack = current == kCameraPositionFront;
  const std::string other = toBack ? kCameraPositionBack : kCameraPositionFront;
  if (auto error = whyImpossible({.camera = other}, *bundle_); !error.empty()) {
    return error;
  }
  if (!thereIsACamera(toBack ? AVCaptureDevicePosition::Back : AVCaptureDevicePosition::Front)) {
    return fmt::format("nothing has changed: there is no {} camera ('nivlo devices' lists the cameras)",
                       other);
  }
  const auto refusals = cameras_->refusals();
  apply({.camera = other});
  if (cameras_->refusals() != refusals) {
    options_.setObject(current, kCameraPositionKey);
    changed_();
    return fmt::format("nothing has changed: the {} camera cannot be opened (see the log)", other);
  }
  return "";
}

void WallpaperShow::setVariant(long variant) {
  if (variant != std::exchange(variant_, variant)) {
    wallpaper_->setWallpaperVariant(variant);
  }
}

/// The wallpaper may have switched cameras by itself since its options were set. While it is paused no camera
/// is opened, and the options alone say which one comes next.
const char* WallpaperShow::cameraInUse() const {
  const bool opened = cameras_->open() || cameras_->openings() != openingsBefore_;
  switch (opened ? cameras_->lastPosition() : AVCaptureDevicePosition::Unspecified) {
    case AVCaptureDevicePosition::Front:
      return kCameraPositionFront;
    case AVCaptureDevicePosition::Back:
      return kCameraPositionBack;
    case AVCaptureDevicePosition::Unspecified:
      break;
  }
  const bool front = isEqualToString(options_.objectForKey(kCameraPositionKey), kCameraPositionFront);
  return front ? kCameraPositionFront : kCameraPositionBack;
}

}  // namespace nivlo
