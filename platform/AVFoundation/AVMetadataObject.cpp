#include "platform/AVFoundation/AVMetadataObject.hpp"

#include <algorithm>

namespace nivlo {

namespace {

CGRect boundsOf(const std::vector<CGPoint>& corners) {
  if (corners.empty()) {
    return {};
  }
  const auto [left, right] =
      std::minmax_element(corners.begin(), corners.end(), [](auto& a, auto& b) { return a.x < b.x; });
  const auto [top, bottom] =
      std::minmax_element(corners.begin(), corners.end(), [](auto& a, auto& b) { return a.y < b.y; });
  return {{left->x, top->y}, {right->x - left->x, bottom->y - top->y}};
}

}  // namespace

AVMetadataMachineReadableCodeObject::AVMetadataMachineReadableCodeObject(
    std::string type, std::optional<std::string> stringValue, const std::vector<CGPoint>& corners,
    const PictureGeometry& picture)
    : AVMetadataObject(std::move(type), boundsOf(corners)),
      stringValue_(std::move(stringValue)),
      picture_(picture) {
  std::transform(corners.begin(), corners.end(), std::back_inserter(corners_),
                 CGPointCreateDictionaryRepresentation);
}

}  // namespace nivlo
