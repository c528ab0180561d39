// Reads Aztec codes wherever in the picture they are.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// Follows the modules from a code's bullseye outwards, and reads a drawing of what they are. ZXing finds
/// Aztec codes in the middle of a picture only, and lays a flat grid over them; runes it does not know.
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
