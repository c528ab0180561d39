// Reads bars however they lie.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/picture/Enhancement.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// How a region of bars is drawn before it is read.
struct BarsRendering {
  double scale = 1;  ///< how much larger than in the picture it is across the bars
  /// How many rows are left of it along the bars, each the mean of those between: more cost more, fewer are
  /// freer of noise. At most as many as the picture has.
  int rows = 32;
  Enhancement enhancement = Enhancement::None;
  bool isDeskewed = false;  ///< for what needs all rows in line, PDF417
};

/// Finds bars, turns each region of them upright and reads that. Decoders follow rows and columns and stand
/// 10 to 25 degrees of tilt with 1-D codes, 5 to 7 with PDF417.
class BarsStrategy : public ReadingStrategy {
 public:
  BarsStrategy(BarsRendering rendering, Decoder decoder);

  std::vector<Reading> read(PictureFeatures& features) override;
  double cost(PictureFeatures& features) const override;

 private:
  struct Size {
    int width;
    int rows;
    int rowsAveraged;
  };
  Size sizeOf(const Quad& region) const;
  LumaPicture rendered(const LumaPicture& picture, const Quad& region);

  BarsRendering rendering_;
  Decoder decoder_;
  LumaBuffer upright_;
  LumaBuffer averaged_;
  LumaBuffer enhanced_;
};

}  // namespace nivlo
