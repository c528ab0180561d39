// The layer that shows what the camera sees.
#pragma once

#include <memory>
#include <utility>

#include "platform/AVFoundation/AVCaptureSession.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/UIKit/CALayer.hpp"

namespace nivlo {

class AVCaptureVideoPreviewLayer : public CALayer, public CaptureFrameConsumer {
 public:
  /// A layer that shows the session's picture; an empty one for a null session.
  static std::shared_ptr<AVCaptureVideoPreviewLayer> initWithSession(
      std::shared_ptr<AVCaptureSession> session);

  AVLayerVideoGravity videoGravity() const override { return gravity_; }
  void setVideoGravity(AVLayerVideoGravity gravity) { gravity_ = gravity; }

  /// The same code with its corners and bounds in this layer's coordinates; null for null.
  std::shared_ptr<const AVMetadataMachineReadableCodeObject> transformedMetadataObjectForMetadataObject(
      const std::shared_ptr<const AVMetadataMachineReadableCodeObject>& object) const;

  /// Makes the frame the layer's picture. The last one stays while the session is stopped.
  void consume(const CaptureFrame& frame) override;

 private:
  explicit AVCaptureVideoPreviewLayer(std::shared_ptr<AVCaptureSession> session)
      : session_(std::move(session)) {}

  std::shared_ptr<AVCaptureSession> session_;
  AVLayerVideoGravity gravity_ = AVLayerVideoGravity::ResizeAspect;
};

}  // namespace nivlo
