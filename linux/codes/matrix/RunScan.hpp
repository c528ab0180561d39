// Finds concentric patterns by the dark and light runs across their middle.
#pragma once

#include <functional>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// The runs of alternately dark and light pixels that a line through the middle of a pattern shows.
struct RunPattern {
  int count = 0;    ///< runs; odd
  int modules = 0;  ///< total width of the runs
  /// Returns whether the runs between `count` + 1 edges, whose positions are in pixels, have the right
  /// widths.
  bool (*matches)(const int* edges) = nullptr;
};

/// The place of a possible pattern.
struct PatternCentre {
  CGPoint place;
  double module = 0;  ///< width of a module in pixels
  int threshold = 0;  ///< luma below which a pixel is dark here
};

/// Scans rows of the picture and calls `found` wherever both the row and the column show the pattern, until
/// `found` returns false. Every pattern is found in several rows.
void findRuns(const LumaPicture& picture, const RunPattern& pattern,
              const std::function<bool(const PatternCentre&)>& found);

}  // namespace nivlo
