// Reads the whole picture, larger or smaller than it is.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/picture/Enhancement.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

struct WholePictureRendering {
  double scale = 1;  ///< how much larger it is read; made less where the result would be too large
  double mostPixels = 1920 * 1080;
  /// At most as many, each the mean of those between. A decoder of 1-D codes does not look at more than 256,
  /// but then only upright codes are seen.
  int rows = 1080;
  Enhancement enhancement = Enhancement::None;  ///< after scaling
};

class WholePictureStrategy : public ReadingStrategy {
 public:
  /// Never enlarges to more pixels than 800x600 has.
  WholePictureStrategy(WholePictureRendering rendering, Decoder decoder);

  std::vector<Reading> read(PictureFeatures& features) override;
  double cost(PictureFeatures& features) const override;

 private:
  struct Size {
    int width;
    int height;
  };
  Size sizeFor(int width, int height) const;
  LumaPicture rendered(const LumaPicture& picture);

  WholePictureRendering rendering_;
  Decoder decoder_;
  LumaBuffer scaled_;
  LumaBuffer enhanced_;
};

}  // namespace nivlo
