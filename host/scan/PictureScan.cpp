#include "host/scan/PictureScan.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {

namespace {

constexpr int kMaxLooks = 10;
constexpr int kMaxFruitlessLooks = 3;

struct Box {
  double left, top, right, bottom;
};

Box boxAround(const std::vector<CGPoint>& corners) {
  const auto byX = [](CGPoint a, CGPoint b) { return a.x < b.x; };
  const auto byY = [](CGPoint a, CGPoint b) { return a.y < b.y; };
  const auto [left, right] = std::minmax_element(corners.begin(), corners.end(), byX);
  const auto [top, bottom] = std::minmax_element(corners.begin(), corners.end(), byY);
  return {left->x, top->y, right->x, bottom->y};
}

/// Two looks place the same code some pixels apart, whereas two codes with the same text do not overlap.
bool isSameCode(const DecodedCode& first, const DecodedCode& second) {
  if (first.type != second.type || first.text != second.text) {
    return false;
  }
  const Box a = boxAround(first.corners);
  const Box b = boxAround(second.corners);
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

}  // namespace

std::vector<DecodedCode> scanPicture(CodeReader& reader, const VideoFrame& frame) {
  std::vector<DecodedCode> codes;
  int fruitlessLooks = 0;
  for (int look = 0; look < kMaxLooks && fruitlessLooks < kMaxFruitlessLooks; ++look) {
    bool news = codes.empty();
    for (DecodedCode& code : reader.look(frame)) {
      if (std::any_of(codes.begin(), codes.end(),
                      [&](const DecodedCode& known) { return isSameCode(known, code); })) {
        continue;
      }
      codes.push_back(std::move(code));
      news = true;
    }
    fruitlessLooks = news ? 0 : fruitlessLooks + 1;
  }
  return codes;
}

}  // namespace nivlo
