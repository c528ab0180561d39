#include "bundle/NivloWallpaper/NivloWallpaper.hpp"

#include "platform/Foundation/Dispatch.hpp"
#include "platform/UIKit/UIApplication.hpp"

namespace nivlo {

NIVLO_EXPORT_WALLPAPER(NivloWallpaper);

std::shared_ptr<NivloWallpaper> NivloWallpaper::initWithFrame(CGRect frame) {
  if (!isUsableFrame(frame)) {
    return nullptr;
  }
  auto wallpaper = ownedByMainThread(std::unique_ptr<NivloWallpaper>(new NivloWallpaper(frame)));
  wallpaper->AddScanView();
  wallpaper->AddShakeToActive();
  return wallpaper;
}

NivloWallpaper::~NivloWallpaper() {
  forgetChimes();
  dealloc();
}

void NivloWallpaper::dealloc() {
  if (captureSession_) {
    captureSession_->removeObserver(this, "interrupted");
  }
  stopRunning();
  if (motionManager_) {
    motionManager_->stopAccelerometerUpdates();
  }
  if (queue_) {
    setQueue(nullptr);
  }
  if (previewLayer_) {
    previewLayer_->removeFromSuperlayer();
    previewLayer_ = nullptr;
  }
  captureSession_ = nullptr;
  setFoundBarcodes({});
  setAllowedBarcodeTypes({});
}

std::shared_ptr<UIView> NivloWallpaper::view() { return shared(); }

void NivloWallpaper::setAnimating(bool animating) {
  setIsShakeDetectable(animating);
  if (animating) {
    startRunning();
  } else {
    stopRunning();
  }
}

void NivloWallpaper::AddScanView() {
  isShakeDetectable_ = true;
  isDetactable_ = true;
  setupCaptureSession();
  setPreviewView(UIView::initWithFrame(view()->frame()));
  addSubview(previewView_);
  if (previewLayer_) {
    previewLayer_->setFrame(previewView_->bounds());
    previewView_->layer()->addSublayer(previewLayer_);
  }
  setFoundBarcodes({});
  auto& center = NSNotificationCenter::defaultCenter();
  const auto observe = [&](const char* name, void (NivloWallpaper::*handler)(const NSNotification&)) {
    center.addObserver(
        shared(),
        [observer = weak(), handler](const NSNotification& notification) {
          if (const auto wallpaper = observer.lock()) {
            ((*wallpaper).*handler)(notification);
          }
        },
        name);
  };
  observe(UIApplicationWillEnterForegroundNotification, &NivloWallpaper::applicationWillEnterForeground);
  observe(UIApplicationDidEnterBackgroundNotification, &NivloWallpaper::applicationDidEnterBackground);
  setAllowedBarcodeTypes({"org.iso.QRCode", "org.iso.PDF417", "org.gs1.UPC-E", "org.iso.Aztec",
                          "org.iso.Code39", "org.iso.Code39Mod43", "org.gs1.EAN-13", "org.gs1.EAN-8",
                          "com.intermec.Code93", "org.iso.Code128"});
}

void NivloWallpaper::startRunning() {
  if (running_) {
    return;
  }
  if (captureSession_) {
    captureSession_->startRunning();
  }
  if (metadataOutput_) {
    metadataOutput_->setMetadataObjectTypes(metadataOutput_->availableMetadataObjectTypes());
  }
  running_ = true;
}

void NivloWallpaper::stopRunning() {
  if (!running_) {
    return;
  }
  if (captureSession_) {
    captureSession_->stopRunning();
  }
  running_ = false;
}

void NivloWallpaper::applicationWillEnterForeground(const NSNotification&) { startRunning(); }

void NivloWallpaper::applicationDidEnterBackground(const NSNotification&) { stopRunning(); }

}  // namespace nivlo
