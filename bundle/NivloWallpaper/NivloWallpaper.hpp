// The live camera wallpaper.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bundle/Barcode/Barcode.hpp"
#include "platform/AVFoundation/AVCaptureDeviceInput.hpp"
#include "platform/AVFoundation/AVCaptureMetadataOutput.hpp"
#include "platform/AVFoundation/AVCaptureSession.hpp"
#include "platform/AVFoundation/AVCaptureVideoPreviewLayer.hpp"
#include "platform/CoreMotion/CMMotionManager.hpp"
#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/HostContract/WallpaperClass.hpp"
#include "platform/UIKit/UIImage.hpp"
#include "platform/UIKit/UIView.hpp"

namespace nivlo {

/// A view that shows the back or the front camera, offers the codes that the camera sees, and switches
/// cameras when the device is shaken. Main thread only, except for the callbacks of the metadata output and
/// the handler of the accelerometer, which run on threads of their own.
///
/// The view also works on a machine without a camera: the capture fields are then null, and every operation
/// on them does nothing.
class NivloWallpaper : public UIView, public Wallpaper, public AVCaptureMetadataOutputObjectsDelegate {
 public:
  using Barcodes = std::vector<std::shared_ptr<Barcode>>;

  static std::string identifier();
  static bool colorChangesSignificantly();
  /// Returns four new dictionaries. The first two scan codes and the last two do not; in each pair the back
  /// camera comes before the front one.
  static std::vector<NSDictionary> presetWallpaperOptions();
  /// Returns what the options mean, for example "the back camera, codes are offered".
  static std::string descriptionForOptions(const NSDictionary& options);
  static std::string thumbnailImageName();
  /// Returns the same picture whatever the options are; null if the bundle lacks it.
  static std::shared_ptr<UIImage> thumbnailImageForOptions(const NSDictionary& options);
  /// Returns the name of the large picture that suits this device's screen.
  static std::string representativeThumbnailImageName();

  /// Returns null if the frame is not a rectangle (see isUsableFrame). The camera does not run yet.
  static std::shared_ptr<NivloWallpaper> initWithFrame(CGRect frame);
  ~NivloWallpaper() override;
  /// Stops the camera and the accelerometer and releases the fields. The destructor does this too.
  void dealloc();

  /// "qr" (a boolean) opens or closes the detection gate; without it the gate closes. "cameraPosition" is
  /// "front" for the front camera; anything else is the back one.
  void setWallpaperOptions(const NSDictionary& options) override;
  /// Ignored: the wallpaper looks the same in every variant.
  void setWallpaperVariant(long variant) override;
  /// Returns this view itself.
  std::shared_ptr<UIView> view() override;
  /// Turns the camera and the detection of shakes on or off, both together.
  void setAnimating(bool animating) override;

  void AddScanView();
  void startRunning();
  void stopRunning();
  /// Starts the camera, even if the view is not animating.
  void applicationWillEnterForeground(const NSNotification& notification);
  void applicationDidEnterBackground(const NSNotification& notification);

  /// Builds the capture session with the default camera. Does nothing if there already is a session.
  void setupCaptureSession();
  /// Returns the first camera that faces this way, or null.
  std::shared_ptr<AVCaptureDevice> cameraWithPosition(AVCaptureDevicePosition position) const;
  void swapFrontAndBackCameras();
  /// Switches to the other camera unless the current one already faces this way.
  void setCameraPosition(AVCaptureDevicePosition position);

  /// Takes a report if the gate is open, closes the gate and hands the report to the main queue. On the
  /// metadata queue.
  void captureOutput(AVCaptureMetadataOutput& output, const MetadataObjects& objects,
                     const AVCaptureConnection& connection) override;
  bool wantsMetadataObjects() const override;
  void validBarcodeFound(std::shared_ptr<Barcode> barcode);
  /// Offers to open the found code if it is a link, else to copy it. Each tap opens the gate again.
  void showBarcodeAlert();

  /// Closes the shake gate; the first time, starts the accelerometer.
  void AddShakeToActive();
  /// The effect of a shake: the other camera.
  void shakeStartEffect();
  /// Called for a shake during a shake's effect. Does nothing.
  void interuptShakeEffect();

  /// Plays the bundle's chime as a new sound and remembers it in soundFileObject; one that is playing goes
  /// on.
  void playSound3();
  /// While a shake's effect lasts: ends the remembered sound and the effect. Otherwise it does nothing, and
  /// the sound stays allocated.
  void stopPlaySound();

  bool isShaking() const { return isShaking_; }
  void setIsShaking(bool isShaking) { isShaking_ = isShaking; }
  bool isShakeDetectable() const { return isShakeDetectable_; }
  void setIsShakeDetectable(bool isShakeDetectable) { isShakeDetectable_ = isShakeDetectable; }
  bool running() const { return running_; }
  void setRunning(bool running) { running_ = running; }
  bool isDetactable() const { return isDetactable_; }
  void setIsDetactable(bool isDetactable) { isDetactable_ = isDetactable; }
  std::uint32_t soundFileObject() const { return soundFileObject_; }
  void setSoundFileObject(std::uint32_t sound) { soundFileObject_ = sound; }
  const std::shared_ptr<AVCaptureSession>& captureSession() const { return captureSession_; }
  void setCaptureSession(std::shared_ptr<AVCaptureSession> session) { captureSession_ = std::move(session); }
  const std::shared_ptr<UIView>& previewView() const { return previewView_; }
  void setPreviewView(std::shared_ptr<UIView> view) { previewView_ = std::move(view); }
  const std::shared_ptr<AVCaptureVideoPreviewLayer>& previewLayer() const { return previewLayer_; }
  void setPreviewLayer(std::shared_ptr<AVCaptureVideoPreviewLayer> layer) {
    previewLayer_ = std::move(layer);
  }
  const std::shared_ptr<AVCaptureMetadataOutput>& metadataOutput() const { return metadataOutput_; }
  void setMetadataOutput(std::shared_ptr<AVCaptureMetadataOutput> output) {
    metadataOutput_ = std::move(output);
  }
  const std::shared_ptr<AVCaptureDevice>& videoDevice() const { return videoDevice_; }
  void setVideoDevice(std::shared_ptr<AVCaptureDevice> device) { videoDevice_ = std::move(device); }
  const std::shared_ptr<AVCaptureDeviceInput>& videoInput() const { return videoInput_; }
  void setVideoInput(std::shared_ptr<AVCaptureDeviceInput> input) { videoInput_ = std::move(input); }
  const Barcodes& foundBarcodes() const { return foundBarcodes_; }
  void setFoundBarcodes(Barcodes barcodes) { foundBarcodes_ = std::move(barcodes); }
  const std::vector<std::string>& allowedBarcodeTypes() const { return allowedBarcodeTypes_; }
  void setAllowedBarcodeTypes(std::vector<std::string> types) { allowedBarcodeTypes_ = std::move(types); }
  const std::shared_ptr<CMMotionManager>& motionManager() const { return motionManager_; }
  void setMotionManager(std::shared_ptr<CMMotionManager> manager) { motionManager_ = std::move(manager); }
  const std::shared_ptr<NSOperationQueue>& queue() const { return queue_; }
  void setQueue(std::shared_ptr<NSOperationQueue> queue) { queue_ = std::move(queue); }

 private:
  explicit NivloWallpaper(CGRect frame) : UIView(frame) {}

  std::shared_ptr<NivloWallpaper> shared() {
    return std::static_pointer_cast<NivloWallpaper>(shared_from_this());
  }
  std::weak_ptr<NivloWallpaper> weak() { return shared(); }
  std::shared_ptr<AVCaptureDeviceInput> firstVideoInput() const;
  void replaceWithOtherCamera(const std::shared_ptr<AVCaptureDeviceInput>& input);
  void processReport(const MetadataObjects& objects);
  void offer(const char* prefix, const std::string& text, const char* action,
             void (*act)(const std::string& text));
  void handleAccelerometer(const CMAccelerometerData* data, const NSError* error);
  void reactToShake();
  /// Nobody tells this view of a chime's end any more; the chimes play on.
  void forgetChimes();

  bool isShaking_ = false;
  std::atomic<bool> isShakeDetectable_{false};
  bool running_ = false;
  std::atomic<bool> isDetactable_{false};
  std::uint32_t soundFileObject_ = 0;
  std::vector<std::uint32_t> chimes_;  ///< all sounds that were told of this view
  std::shared_ptr<AVCaptureSession> captureSession_;
  std::shared_ptr<UIView> previewView_;
  std::shared_ptr<AVCaptureVideoPreviewLayer> previewLayer_;
  std::shared_ptr<AVCaptureMetadataOutput> metadataOutput_;
  std::shared_ptr<AVCaptureDevice> videoDevice_;
  std::shared_ptr<AVCaptureDeviceInput> videoInput_;
  Barcodes foundBarcodes_;
  std::vector<std::string> allowedBarcodeTypes_;
  std::shared_ptr<CMMotionManager> motionManager_;
  std::shared_ptr<NSOperationQueue> queue_;
};

/// A system sound's completion: calls stopPlaySound on the view that `clientData` points to. The view is not
/// kept alive by that; it withdraws itself when it goes.
void completionCallback(std::uint32_t soundID, void* clientData);

}  // namespace nivlo
