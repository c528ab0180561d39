// Reads codes that lie at an angle to the picture's sides.
#pragma once

#include <memory>

#include "linux/codes/ReadingStrategy.hpp"

namespace nivlo {

/// Lets another strategy read the picture turned about its centre. Decoders follow rows and columns and stand
/// 10 to 25 degrees of tilt with 1-D codes, 5 to 7 with PDF417. What leaves the picture by turning is not
/// read.
class TurnedStrategy : public ReadingStrategy {
 public:
  /// The picture is read turned clockwise.
  TurnedStrategy(double degrees, std::unique_ptr<ReadingStrategy> inner);

  std::vector<Reading> read(const LumaPicture& picture) override;

 private:
  void turn(const LumaPicture& picture, double scale);

  double cosine_;
  double sine_;
  std::unique_ptr<ReadingStrategy> inner_;
  LumaBuffer turned_;
};

}  // namespace nivlo
