// Reads bars at any angle.
#pragma once

#include <vector>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/picture/Enhancement.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// The way in which a region of bars is rendered before it is decoded.
struct BarsRendering {
  /// Size across the bars, relative to the picture; lowered if the rendition would become too large.
  double scale = 1;
  /// Maximum number of rows along the bars, each the mean of several. More rows cost more, fewer have less
  /// noise. There are never more than the region has in the picture.
  int maxRows = 32;
  Enhancement enhancement = Enhancement::None;
  /// True to straighten the region first (see deskewed), for PDF417, whose rows must not be slanted.
  bool isDeskewed = false;
};

/// Turns each region of bars upright and decodes it. Decoders follow the rows and columns of a picture, and
/// tolerate a tilt of 10 to 25 degrees for 1-D codes and of 5 to 7 degrees for PDF417.
class BarsStrategy : public ReadingStrategy {
 public:
  BarsStrategy(BarsRendering rendering, Decoder decoder);

  std::vector<Reading> read(PictureFeatures& features) override;
  double cost(PictureFeatures& features) const override;

 private:
  struct Size {
    int width;
    int rows;
    int averagedRows;  ///< rows that are drawn and then averaged to `rows`
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
