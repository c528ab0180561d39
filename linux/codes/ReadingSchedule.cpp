#include "linux/codes/ReadingSchedule.hpp"

#include <utility>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/decoders/ZXingDecoder.hpp"
#include "linux/codes/picture/Enhancement.hpp"
#include "linux/codes/retail/RetailBarsDecoder.hpp"
#include "linux/codes/strategies/AztecStrategy.hpp"
#include "linux/codes/strategies/BarsStrategy.hpp"
#include "linux/codes/strategies/QRGridStrategy.hpp"
#include "linux/codes/strategies/WholePictureStrategy.hpp"

namespace nivlo {

namespace {

std::unique_ptr<ReadingStrategy> whole(WholePictureRendering rendering, Decoder decoder) {
  return std::make_unique<WholePictureStrategy>(rendering, std::move(decoder));
}

std::unique_ptr<ReadingStrategy> bars(BarsRendering rendering, Decoder decoder) {
  return std::make_unique<BarsStrategy>(rendering, std::move(decoder));
}

}  // namespace

ReadingSchedule makeReadingSchedule() {
  using enum Symbologies;
  using enum Effort;
  using enum Enhancement;
  // PDF417 stacks rows of codewords, so it needs all rows that a rendition can have.
  constexpr int kAllRows = 320;
  // ZXing scans about this many rows of a tall picture, so averaging to this many loses no scan line.
  constexpr int kScanLines = 256;
  // Fewer rows would each average so much that leaning bars blur; more rows would keep the noise.
  constexpr int kBands = 12;
  // Half the pixels of 1280x720, for codes that a smaller picture shows as well and for costlier searches.
  constexpr double kHalf = 900 * 510;
  const Decoder matrix = zxing(Matrix, Quick);
  const Decoder lines = zxing(Linear, Upright);
  ReadingSchedule schedule;
  const auto add = [&](std::unique_ptr<ReadingStrategy> strategy) {
    schedule.rotation.push_back(std::move(strategy));
  };
  add(whole({}, zxing(All, Quick)));
  schedule.mostComplete.push_back(schedule.rotation.back().get());
  add(std::make_unique<AztecStrategy>(zxing(Symbologies::Aztec, Quick)));
  add(bars({.scale = 1.5}, lines));
  add(bars({.scale = 2, .maxRows = kBands}, retailBars()));
  add(std::make_unique<QRGridStrategy>(zxing(Matrix, Quick)));
  add(whole({}, zxing(Linear, Thorough)));
  schedule.mostComplete.push_back(schedule.rotation.back().get());
  add(whole({.scale = 0.5}, zxing(All, Thorough)));
  add(bars({.scale = 1, .maxRows = kAllRows}, zxing(Bars, Upright)));
  add(whole({.scale = 2, .maxPixels = kHalf, .enhancement = Sharp}, matrix));
  add(bars({.scale = 1, .enhancement = EvenContrast}, lines));
  add(whole({.maxRows = kScanLines, .enhancement = EvenContrast}, lines));
  add(bars({.scale = 2}, lines));
  add(bars({.scale = 1, .maxRows = kBands}, retailBars()));
  add(bars({.scale = 1, .maxRows = kAllRows, .isDeskewed = true}, zxing(Bars, Upright)));
  add(bars({.scale = 2, .enhancement = EvenContrast}, lines));
  add(whole({.maxPixels = kHalf, .enhancement = Inverted}, zxing(Matrix, Upright)));
  add(whole({.scale = 0.25}, matrix));
  add(whole({.scale = 2, .maxRows = kScanLines, .enhancement = EvenContrast}, lines));
  add(whole({.scale = 2.0 / 3}, matrix));
  add(bars({.scale = 0.5, .enhancement = Sharp}, lines));
  add(whole({.scale = 3, .maxRows = kScanLines}, lines));
  return schedule;
}

}  // namespace nivlo
