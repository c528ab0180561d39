// The layer that shows what the camera sees.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/AVFoundation/AVCaptureSession.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/UIKit/CALayer.hpp"

namespace nivlo {

class AVCaptureVideoPreviewLayer : public CALayer, public CaptureFrameConsumer {
 public:
  /// A layer that shows the session's picture; an empty one for a null session.
  static std::shared_ptr<AVCaptureVideoPreviewLayer> initWithSession(
      std::shared_ptr<AVCaptureSession> session);

  AVLayerVideoGravity videoGravity() const { return gravity_; }
  void setVideoGravity(AVLayerVideoGravity gravity) { gravity_ = gravity; }

  /// The same code with its corners and bounds in this layer's coordinates; null for null.
  std::shared_ptr<const AVMetadataMachineReadableCodeObject> transformedMetadataObjectForMetadataObject(
      const std::shared_ptr<const AVMetadataMachineReadableCodeObject>& object) const;

  /// The newest frame, which stays the last one's while the session is stopped; its picture is null before
  /// the first. Callable from any thread.
  CaptureFrame newestFrame() const;

  /// Called on the camera driver's thread for each new frame; it must be quick. Callable from any thread.
  void setFrameHandler(std::function<void()> handler);

  void consume(const CaptureFrame& frame) override;

 private:
  explicit AVCaptureVideoPreviewLayer(std::shared_ptr<AVCaptureSession> session)
      : session_(std::move(session)) {}

  std::shared_ptr<AVCaptureSession> session_;
  AVLayerVideoGravity gravity_ = AVLayerVideoGravity::ResizeAspect;
  mutable std::mutex mutex_;
  CaptureFrame newest_;
  std::function<void()> frameHandler_;
};

}  // namespace nivlo
