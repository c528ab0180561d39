// Reads QR codes that are not flat.
#pragma once

#include <utility>
#include <vector>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/matrix/QRFinder.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// Follows the modules from the finder patterns in a code's corners, and decodes a drawing of them. Decoders
/// lay a flat grid over a code, which does not fit on cloth and curled paper.
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
