#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

bool NivloWallpaper::wantsMetadataObjects() const { return isDetactable_; }

void NivloWallpaper::captureOutput(AVCaptureMetadataOutput&, const MetadataObjects& objects,
                                   const AVCaptureConnection&) {
  if (objects.empty() || !isDetactable_) {
    return;
  }
  isDetactable_ = false;
  dispatch_async(dispatch_get_main_queue(), [self = shared(), objects] { self->processReport(objects); });
}

/// The last code of a report decides: each code discards the ones before it, even if its own type is not
/// allowed. Objects that are not codes discard nothing.
void NivloWallpaper::processReport(const MetadataObjects& objects) {
  for (const auto& object : objects) {
    const auto code = std::dynamic_pointer_cast<const AVMetadataMachineReadableCodeObject>(object);
    if (!code || !previewLayer_) {
      continue;
    }
    const auto barcode =
        Barcode::processMetadataObject(previewLayer_->transformedMetadataObjectForMetadataObject(code));
    if (!barcode) {
      continue;
    }
    foundBarcodes_.clear();
    for (const auto& type : allowedBarcodeTypes_) {
      if (type == barcode->getBarcodeType()) {
        validBarcodeFound(barcode);
      }
    }
  }
  showBarcodeAlert();
}

void NivloWallpaper::validBarcodeFound(std::shared_ptr<Barcode> barcode) {
  foundBarcodes_.push_back(std::move(barcode));
}

}  // namespace nivlo
