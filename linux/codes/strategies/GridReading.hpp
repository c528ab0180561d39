// Reads the modules that a grid was bent to follow.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/matrix/ModuleGrid.hpp"
#include "linux/codes/matrix/Modules.hpp"

namespace nivlo {

/// Draws the modules of the grid and returns what the decoder reads in the drawing, with outlines in pixels
/// of the grid's picture. May throw.
std::vector<Reading> readGrid(const ModuleGrid& grid, const Modules& modules, const Decoder& decoder);

/// Tries the sizes, in modules across, one after the other, and appends to `readings` what `follow` reads at
/// the first at which it reads anything.
void appendFirst(std::span<const int> sizes, const std::function<std::vector<Reading>(int across)>& follow,
                 std::vector<Reading>& readings);

/// Returns the cost of following, drawing and reading a grid of each size, in the unit of
/// ReadingStrategy::cost.
double costOfGrids(std::span<const int> sizes);

}  // namespace nivlo
