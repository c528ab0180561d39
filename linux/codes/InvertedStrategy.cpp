#include "linux/codes/InvertedStrategy.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {

InvertedStrategy::InvertedStrategy(std::unique_ptr<ReadingStrategy> inner) : inner_(std::move(inner)) {}

std::vector<Reading> InvertedStrategy::read(const LumaPicture& picture) {
  negative_.resize(picture.width, picture.height);
  for (int y = 0; y < picture.height; ++y) {
    std::transform(picture.row(y), picture.row(y) + picture.width, negative_.row(y),
                   [](std::uint8_t luma) { return static_cast<std::uint8_t>(255 - luma); });
  }
  return inner_->read(negative_.picture());
}

}  // namespace nivlo
