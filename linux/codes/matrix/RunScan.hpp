// Finds runs of dark and light through the middle of what is built around it.
#pragma once

#include <functional>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Dark and light in turns, the middle one among them, across a pattern.
struct Runs {
  int count = 0;    ///< odd
  int modules = 0;  ///< that they have together
  /// Whether those between `count` + 1 edges, in pixels, are such runs.
  bool (*areBetween)(const int* edges) = nullptr;
};

struct RunsMiddle {
  CGPoint place;
  double module = 0;  ///< in pixels
  int threshold = 0;  ///< what is less is dark there
};

/// Goes through rows of the picture, and calls `found` wherever both the row and the column show the runs,
/// until it returns false. A pattern is found in several rows.
void findRuns(const LumaPicture& picture, const Runs& runs,
              const std::function<bool(const RunsMiddle&)>& found);

}  // namespace nivlo
