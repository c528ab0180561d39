// Reads QR codes on what is not flat.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// Follows the modules from the squares in a code's corners and reads a drawing of what they are. Decoders
/// lay a flat grid over a code, which cloth and curled paper do not keep to.
class QRGridStrategy : public ReadingStrategy {
 public:
  explicit QRGridStrategy(Decoder decoder) : decoder_(std::move(decoder)) {}

  std::vector<Reading> read(PictureFeatures& features) override;
  double cost(PictureFeatures& features) const override;

 private:
  std::vector<Reading> follow(const LumaPicture& picture, const QRPlace& place, int modules) const;

  Decoder decoder_;
};

}  // namespace nivlo
