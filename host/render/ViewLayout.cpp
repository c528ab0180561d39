#include "host/render/ViewLayout.hpp"

#include <utility>

namespace nivlo {

namespace {

void collect(const CALayer& layer, CGPoint origin, std::vector<PlacedPicture>& found) {
  const CGRect rect = CGRectOffset(layer.frame(), origin.x, origin.y);
  if (auto frame = layer.picture(); frame.picture) {
    found.push_back({std::move(frame), layer.videoGravity(), rect});
  }
  for (const auto& sublayer : layer.sublayers()) {
    collect(*sublayer, rect.origin, found);
  }
}

}  // namespace

CGRect stretched(CGRect rect, CGSize from, CGSize to) {
  const double x = to.width / from.width;
  const double y = to.height / from.height;
  return {{rect.origin.x * x, rect.origin.y * y}, {rect.size.width * x, rect.size.height * y}};
}

std::vector<PlacedPicture> placedPictures(const LaidOutView& view, CGSize surface) {
  std::vector<PlacedPicture> found;
  collect(*view.view->layer(), {}, found);
  for (auto& picture : found) {
    picture.rect = stretched(picture.rect, view.size, surface);
  }
  return found;
}

}  // namespace nivlo
