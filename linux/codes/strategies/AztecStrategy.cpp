#include "linux/codes/strategies/AztecStrategy.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

#include <fmt/format.h>

#include "linux/codes/matrix/AztecRune.hpp"
#include "linux/codes/matrix/ModuleGrid.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

// Modules across, with something of what is around, tried one after the other; odd, as bullseyes are. Codes
// of more show too small in a camera's picture.
constexpr std::array kCompactSizes{29};
constexpr std::array kFullSizes{41, 65};
constexpr int kCompactBullseye = 7;

std::span<const int> sizesOf(const Bullseye& bullseye) {
  if (bullseye.modules == kCompactBullseye) {
    return kCompactSizes;
  }
  return kFullSizes;
}

/// A square in the middle of another, both measured in modules.
Quad middle(int modules, int across) {
  const double near = (across - modules) / 2.0;
  const double far = (across + modules) / 2.0;
  return {{{near, near}, {far, near}, {far, far}, {near, far}}};
}

/// Where the corners of the bullseye are.
std::vector<ModuleGrid::Sighting> sightings(const Bullseye& bullseye, int across) {
  const Quad corners = middle(bullseye.modules, across);
  std::vector<ModuleGrid::Sighting> known;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    known.push_back({corners[i], bullseye.outline[i]});
  }
  return known;
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
    for (const int across : sizesOf(bullseye)) {
      std::vector<Reading> found = follow(features.picture(), bullseye, across);
      if (found.empty()) {
        continue;
      }
      readings.insert(readings.end(), std::make_move_iterator(found.begin()),
                      std::make_move_iterator(found.end()));
      break;
    }
  }
  return readings;
}

std::vector<Reading> AztecStrategy::follow(const LumaPicture& picture, const Bullseye& bullseye,
                                           int across) const {
  ModuleGrid grid(picture, surroundings(bullseye, across), across);
  grid.follow(sightings(bullseye, across));
  const Modules modules = grid.modules(bullseye.lightOnDark);
  const auto rune = bullseye.modules == kCompactBullseye ? readAztecRune(modules) : std::nullopt;
  if (rune) {
    return {readingOf(*rune, grid, across)};
  }
  return grid.read(modules, decoder_);
}

double AztecStrategy::cost(PictureFeatures& features) const {
  double cost = 0;
  for (const Bullseye& bullseye : features.bullseyes()) {
    for (const int across : sizesOf(bullseye)) {
      cost += ModuleGrid::cost(across);
    }
  }
  return cost;
}

}  // namespace nivlo
