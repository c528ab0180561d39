#include "host/render/ViewLayout.hpp"

#include <utility>

namespace nivlo {

namespace {

struct Scale {
  double x = 1;
  double y = 1;
};

void collect(const std::shared_ptr<CALayer>& layer, CGPoint origin, Scale scale,
             std::vector<PlacedPicture>& found) {
  const CGRect rect = CGRectOffset(layer->frame(), origin.x, origin.y);
  if (auto frame = layer->picture(); frame.picture) {
    found.push_back({std::move(frame),
                     layer->videoGravity(),
                     {{rect.origin.x * scale.x, rect.origin.y * scale.y},
                      {rect.size.width * scale.x, rect.size.height * scale.y}}});
  }
  for (const auto& sublayer : layer->sublayers()) {
    collect(sublayer, rect.origin, scale, found);
  }
}

}  // namespace

std::vector<PlacedPicture> placedPictures(const LaidOutView& view, CGSize surface) {
  std::vector<PlacedPicture> found;
  collect(view.view->layer(), {}, {surface.width / view.size.width, surface.height / view.size.height},
          found);
  return found;
}

}  // namespace nivlo
