#include "host/scan/PictureScan.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {

namespace {

constexpr int kMostLooks = 10;
constexpr int kLooksWithoutNews = 3;

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

/// Different looks place the same code some pixels apart; equal labels do not lie on one another.
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
  int looksWithoutNews = 0;
  for (int look = 0; look < kMostLooks && looksWithoutNews < kLooksWithoutNews; ++look) {
    bool news = codes.empty();
    for (DecodedCode& code : reader.look(frame)) {
      if (std::any_of(codes.begin(), codes.end(),
                      [&](const DecodedCode& known) { return isSameCode(known, code); })) {
        continue;
      }
      codes.push_back(std::move(code));
      news = true;
    }
    looksWithoutNews = news ? 0 : looksWithoutNews + 1;
  }
  return codes;
}

}  // namespace nivlo
