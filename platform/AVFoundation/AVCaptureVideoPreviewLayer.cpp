#include "platform/AVFoundation/AVCaptureVideoPreviewLayer.hpp"

#include <utility>
#include <vector>

namespace nivlo {

std::shared_ptr<AVCaptureVideoPreviewLayer> AVCaptureVideoPreviewLayer::initWithSession(
    std::shared_ptr<AVCaptureSession> session) {
  std::shared_ptr<AVCaptureVideoPreviewLayer> layer(new AVCaptureVideoPreviewLayer(std::move(session)));
  if (layer->session_) {
    layer->session_->addConsumer(layer);
  }
  return layer;
}

std::shared_ptr<const AVMetadataMachineReadableCodeObject>
AVCaptureVideoPreviewLayer::transformedMetadataObjectForMetadataObject(
    const std::shared_ptr<const AVMetadataMachineReadableCodeObject>& object) const {
  if (!object) {
    return nullptr;
  }
  const auto transform = pictureToLayer(object->picture(), bounds().size, gravity_);
  std::vector<CGPoint> corners;
  for (const auto& corner : object->corners()) {
    CGPoint point;
    CGPointMakeWithDictionaryRepresentation(corner, &point);
    corners.push_back(CGPointApplyAffineTransform(point, transform));
  }
  return std::make_shared<AVMetadataMachineReadableCodeObject>(object->type(), object->stringValue(), corners,
                                                               object->picture());
}

void AVCaptureVideoPreviewLayer::consume(const CaptureFrame& frame) { setPicture(frame); }

}  // namespace nivlo
