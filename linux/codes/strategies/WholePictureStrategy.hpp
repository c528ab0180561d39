// Reads the whole picture, enlarged or reduced.
#pragma once

#include <vector>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/picture/Enhancement.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

/// The way in which the picture is rendered before it is decoded.
struct WholePictureRendering {
  double scale = 1;  ///< lowered if the rendition would become too large
  double maxPixels = 1920 * 1080;
  /// Maximum number of rows, each the mean of the picture's rows that it stands for. Decoders of 1-D codes
  /// scan about 256 rows at most, but in a rendition with so few they see upright codes only.
  int maxRows = 1080;
  Enhancement enhancement = Enhancement::None;  ///< applied after scaling
};

/// Renders the whole picture and decodes the rendition.
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
