// Reads Aztec codes anywhere in the picture, also aslant.
#pragma once

#include "linux/codes/ReadingStrategy.hpp"
#include "linux/codes/ZXingDecoder.hpp"

namespace nivlo {

/// Finds the middle of a code by itself, straightens what is around it and reads that: ZXing finds an Aztec
/// code only where it covers the middle of the picture and is hardly turned.
class AztecStrategy : public ReadingStrategy {
 public:
  explicit AztecStrategy(int pixelsPerModule);

  std::vector<Reading> read(Scene& scene) override;
  double cost(Scene& scene) const override;

 private:
  int pixelsPerModule_;
  Decoder decoder_ = zxing(Symbologies::Aztec, Effort::Upright);
  LumaBuffer straight_;
  LumaBuffer negative_;
};

}  // namespace nivlo
