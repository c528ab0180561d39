// Reads Aztec codes anywhere in the picture.
#pragma once

#include <utility>
#include <vector>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/matrix/BullseyeFinder.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// Follows the modules outwards from a code's bullseye, and decodes a drawing of them. ZXing finds Aztec
/// codes only in the middle of a picture, lays a flat grid over them, and does not know runes.
class AztecStrategy : public ReadingStrategy {
 public:
  explicit AztecStrategy(Decoder decoder) : decoder_(std::move(decoder)) {}

  std::vector<Reading> read(PictureFeatures& features) override;
  double cost(PictureFeatures& features) const override;

 private:
  std::vector<Reading> follow(const LumaPicture& picture, const Bullseye& bullseye, int across) const;

  Decoder decoder_;
};

}  // namespace nivlo
