#include "linux/codes/strategies/AztecStrategy.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include <fmt/format.h>

#include "linux/codes/matrix/AztecRune.hpp"
#include "linux/codes/matrix/ModuleGrid.hpp"
#include "linux/codes/matrix/Modules.hpp"
#include "linux/codes/picture/Quad.hpp"
#include "linux/codes/strategies/GridReading.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

// Modules across that are tried, one after the other, with some room around the code. They are odd, as
// bullseyes are. Larger codes show too small in a camera's picture.
constexpr std::array kCompactSizes{29};
constexpr std::array kFullSizes{41, 65};
constexpr int kCompactBullseye = 7;

std::span<const int> sizesOf(const Bullseye& bullseye) {
  if (bullseye.modules == kCompactBullseye) {
    return kCompactSizes;
  }
  return kFullSizes;
}

/// Returns a square of `modules` in the middle of one of `across`.
Quad middle(int modules, int across) {
  const double near = (across - modules) / 2.0;
  const double far = (across + modules) / 2.0;
  return {{{near, near}, {far, near}, {far, far}, {near, far}}};
}

/// The corners of the bullseye.
std::vector<ModuleGrid::Anchor> anchorsOf(const Bullseye& bullseye, int across) {
  const Quad corners = middle(bullseye.modules, across);
  std::vector<ModuleGrid::Anchor> anchors;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    anchors.push_back({corners[i], bullseye.outline[i]});
  }
  return anchors;
}

Reading readingOf(const AztecRune& rune, const ModuleGrid& grid, int across) {
  Quad outline = middle(kRuneModules, across);
  for (CGPoint& corner : outline) {
    corner = grid.inPicture(corner);
  }
  std::rotate(outline.begin(), outline.begin() + rune.turns, outline.end());
  return {AVMetadataObjectTypeAztecCode, fmt::format("{:03}", rune.number), outline};
}

}  // namespace

std::vector<Reading> AztecStrategy::read(PictureFeatures& features) {
  std::vector<Reading> readings;
  for (const Bullseye& bullseye : features.bullseyes()) {
    appendFirst(
        sizesOf(bullseye), [&](int across) { return follow(features.picture(), bullseye, across); },
        readings);
  }
  return readings;
}

std::vector<Reading> AztecStrategy::follow(const LumaPicture& picture, const Bullseye& bullseye,
                                           int across) const {
  ModuleGrid grid(picture, surroundings(bullseye, across), across);
  grid.follow(anchorsOf(bullseye, across));
  const Modules modules = grid.modules(bullseye.lightOnDark);
  const auto rune = bullseye.modules == kCompactBullseye ? readAztecRune(modules) : std::nullopt;
  if (rune) {
    return {readingOf(*rune, grid, across)};
  }
  return readGrid(grid, modules, decoder_);
}

double AztecStrategy::cost(PictureFeatures& features) const {
  double cost = 0;
  for (const Bullseye& bullseye : features.bullseyes()) {
    cost += costOfGrids(sizesOf(bullseye));
  }
  return cost;
}

}  // namespace nivlo
