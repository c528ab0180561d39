#include "host/render/ViewLayout.hpp"

namespace nivlo {

namespace {

struct Scale {
  double x = 1;
  double y = 1;
};

void collect(const std::shared_ptr<CALayer>& layer, CGPoint origin, Scale scale,
             std::vector<PlacedPreview>& found) {
  const CGRect rect = CGRectOffset(layer->frame(), origin.x, origin.y);
  if (auto preview = std::dynamic_pointer_cast<AVCaptureVideoPreviewLayer>(layer)) {
    found.push_back({std::move(preview),
                     {{rect.origin.x * scale.x, rect.origin.y * scale.y},
                      {rect.size.width * scale.x, rect.size.height * scale.y}}});
  }
  for (const auto& sublayer : layer->sublayers()) {
    collect(sublayer, rect.origin, scale, found);
  }
}

}  // namespace

std::vector<PlacedPreview> placedPreviews(const LaidOutView& view, CGSize surface) {
  std::vector<PlacedPreview> found;
  collect(view.view->layer(), {}, {surface.width / view.size.width, surface.height / view.size.height},
          found);
  return found;
}

}  // namespace nivlo
