// A layer that shows a camera's picture.
#pragma once

#include <memory>
#include <utility>

#include "platform/AVFoundation/AVCaptureSession.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/UIKit/CALayer.hpp"

namespace nivlo {

/// Shows the picture of a capture session: upright, and mirrored when it is a front camera's. The last frame
/// stays while the session is stopped. The layer keeps its session alive.
///
/// Main thread only, except where a comment says otherwise.
class AVCaptureVideoPreviewLayer : public CALayer, public CaptureFrameConsumer {
 public:
  /// Makes a layer that shows the session's picture. For a null session it stays empty.
  static std::shared_ptr<AVCaptureVideoPreviewLayer> initWithSession(
      std::shared_ptr<AVCaptureSession> session);

  /// The way in which the picture is fitted into the layer: ResizeAspect until it is set.
  AVLayerVideoGravity videoGravity() const override { return gravity_; }
  /// Seen when any layer of the tree next gets a picture.
  void setVideoGravity(AVLayerVideoGravity gravity) { gravity_ = gravity; }

  /// Returns the reported code with its corners and bounds in this layer's coordinates, according to the
  /// layer's present size and gravity. Null for null. The object must be one that was reported: converting a
  /// result again would move its corners a second time.
  std::shared_ptr<const AVMetadataMachineReadableCodeObject> transformedMetadataObjectForMetadataObject(
      const std::shared_ptr<const AVMetadataMachineReadableCodeObject>& object) const;

  /// Makes the frame the layer's picture. Called on the camera's thread.
  void consume(const CaptureFrame& frame) override;

 private:
  explicit AVCaptureVideoPreviewLayer(std::shared_ptr<AVCaptureSession> session)
      : session_(std::move(session)) {}

  std::shared_ptr<AVCaptureSession> session_;
  AVLayerVideoGravity gravity_ = AVLayerVideoGravity::ResizeAspect;
};

}  // namespace nivlo
