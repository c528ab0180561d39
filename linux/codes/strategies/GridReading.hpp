// Reads the modules that a grid was bent to follow.
#pragma once

#include <vector>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/matrix/ModuleGrid.hpp"
#include "linux/codes/matrix/Modules.hpp"

namespace nivlo {

/// Draws the modules of the grid and returns what the decoder reads in the drawing, with outlines in pixels
/// of the grid's picture. May throw.
std::vector<Reading> readGrid(const ModuleGrid& grid, const Modules& modules, const Decoder& decoder);

/// Returns the cost of following a grid of `modules` by `modules`, drawing it and reading the drawing, in the
/// unit of ReadingStrategy::cost.
double costOfGrid(int modules);

}  // namespace nivlo
