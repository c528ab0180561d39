// Reads Aztec codes on what is not flat, and such whose ink has run.
#pragma once

#include "linux/codes/Decoder.hpp"
#include "linux/codes/LumaPicture.hpp"
#include "linux/codes/ReadingStrategy.hpp"

namespace nivlo {

/// Follows the modules from a code's bullseye outwards, and reads a drawing of what they are.
class AztecGridStrategy : public ReadingStrategy {
 public:
  explicit AztecGridStrategy(Decoder decoder) : decoder_(std::move(decoder)) {}

  std::vector<Reading> read(Scene& scene) override;
  double cost(Scene& scene) const override;

 private:
  Decoder decoder_;
  LumaBuffer drawing_;
};

}  // namespace nivlo
