#include "linux/codes/BarFinder.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

constexpr std::size_t kMostRegions = 3;
// Bars that a decoder can read are still seen at this size.
constexpr int kLongestSide = 960;
constexpr int kBlocksAcross = 64;
constexpr int kSmallestBlock = 4;
// Mean of squared differences over two pixels: below it a block is paper, or noise.
constexpr float kLeastEnergy = 100;
// 1 where all edges of a block are parallel, 0 where none are.
constexpr float kLeastCoherence = 0.6F;
constexpr double kMostTurn = 15 * std::numbers::pi / 180;
// Bars have more edges than the print beside them.
constexpr double kLeastOfMean = 0.6;
// A wide white bar of a code close by leaves blocks without an edge.
constexpr int kReach = 2;
constexpr double kFewestBlocksAcross = 5;
constexpr double kLeastFilled = 0.25;

/// The structure tensor's direction and strength in one block.
struct Block {
  double angle = 0;  ///< across the edges, in radians, 0..pi
  float weight = 0;  ///< 0 where there are no edges of one direction
  bool taken = false;
};

struct Grid {
  int blockSide = 0;
  int columns = 0;
  int rows = 0;
  std::vector<Block> blocks;

  Block& at(int column, int row) { return blocks[static_cast<std::size_t>(row) * columns + column]; }
};

Block blockOf(const LumaPicture& picture, int left, int top, int side) {
  int xx = 0;
  int yy = 0;
  int xy = 0;
  for (int y = top; y < top + side; ++y) {
    const std::uint8_t* above = picture.row(y - 1);
    const std::uint8_t* here = picture.row(y);
    const std::uint8_t* below = picture.row(y + 1);
    for (int x = left; x < left + side; ++x) {
      const int dx = here[x + 1] - here[x - 1];
      const int dy = below[x] - above[x];
      xx += dx * dx;
      yy += dy * dy;
      xy += dx * dy;
    }
  }
  const auto energy = static_cast<float>(xx + yy);
  const float directed = std::hypot(static_cast<float>(xx - yy), static_cast<float>(2 * xy));
  if (energy < kLeastEnergy * static_cast<float>(side * side) || directed < kLeastCoherence * energy)
    return {};
  const double angle = 0.5 * std::atan2(2.0 * xy, static_cast<double>(xx - yy));
  return {angle < 0 ? angle + std::numbers::pi : angle, std::sqrt(directed)};
}

Grid gridOf(const LumaPicture& picture) {
  Grid grid;
  grid.blockSide = std::max(kSmallestBlock, std::max(picture.width, picture.height) / kBlocksAcross);
  grid.columns = std::max(0, (picture.width - 2) / grid.blockSide);
  grid.rows = std::max(0, (picture.height - 2) / grid.blockSide);
  grid.blocks.reserve(static_cast<std::size_t>(grid.columns) * grid.rows);
  for (int row = 0; row < grid.rows; ++row) {
    for (int column = 0; column < grid.columns; ++column)
      grid.blocks.push_back(
          blockOf(picture, 1 + column * grid.blockSide, 1 + row * grid.blockSide, grid.blockSide));
  }
  return grid;
}

double turnBetween(double first, double second) {
  const double turn = std::abs(first - second);
  return std::min(turn, std::numbers::pi - turn);
}

/// Blocks that hang together and agree on a direction.
struct Cluster {
  std::vector<std::pair<int, int>> places;
  double cosines = 0;  ///< sums over twice the angle, for which 0 and 180 degrees are one
  double sines = 0;

  double angle() const {
    const double angle = 0.5 * std::atan2(sines, cosines);
    return angle < 0 ? angle + std::numbers::pi : angle;
  }
  double meanWeight() const { return std::hypot(cosines, sines) / static_cast<double>(places.size()); }
  void add(int column, int row, Block& block) {
    block.taken = true;
    places.emplace_back(column, row);
    cosines += block.weight * std::cos(2 * block.angle);
    sines += block.weight * std::sin(2 * block.angle);
  }
};

Cluster clusterFrom(Grid& grid, int column, int row) {
  Cluster cluster;
  cluster.add(column, row, grid.at(column, row));
  for (std::size_t i = 0; i < cluster.places.size(); ++i) {
    const auto [fromColumn, fromRow] = cluster.places[i];
    const double angle = cluster.angle();
    const double least = kLeastOfMean * cluster.meanWeight();
    for (int y = std::max(0, fromRow - kReach); y <= std::min(grid.rows - 1, fromRow + kReach); ++y) {
      for (int x = std::max(0, fromColumn - kReach); x <= std::min(grid.columns - 1, fromColumn + kReach);
           ++x) {
        Block& block = grid.at(x, y);
        if (block.taken || block.weight < least || turnBetween(block.angle, angle) > kMostTurn) continue;
        cluster.add(x, y, block);
      }
    }
  }
  return cluster;
}

/// The cluster's rectangle in pixels of the picture that the grid was made of; of no size where it is too
/// short or too sparse to be a code.
Quad rectangleOf(const Cluster& cluster, int blockSide) {
  double angle = cluster.angle();
  if (angle > std::numbers::pi / 2) angle -= std::numbers::pi;
  const CGPoint across{std::cos(angle), std::sin(angle)};
  double left = HUGE_VAL, right = -HUGE_VAL, top = HUGE_VAL, bottom = -HUGE_VAL;
  for (const auto& [column, row] : cluster.places) {
    const double x = 1 + (column + 0.5) * blockSide;
    const double y = 1 + (row + 0.5) * blockSide;
    const double u = across.x * x + across.y * y;
    const double v = across.x * y - across.y * x;
    left = std::min(left, u - blockSide / 2.0);
    right = std::max(right, u + blockSide / 2.0);
    top = std::min(top, v - blockSide / 2.0);
    bottom = std::max(bottom, v + blockSide / 2.0);
  }
  const double filled = static_cast<double>(cluster.places.size()) * blockSide * blockSide;
  if (right - left < kFewestBlocksAcross * blockSide ||
      filled < kLeastFilled * (right - left) * (bottom - top))
    return {};
  const auto corner = [&](double u, double v) {
    return CGPoint{across.x * u - across.y * v, across.y * u + across.x * v};
  };
  return {corner(left, top), corner(right, top), corner(right, bottom), corner(left, bottom)};
}

}  // namespace

std::vector<Quad> findBars(const LumaPicture& picture) {
  LumaBuffer reduced;
  LumaPicture small = picture;
  const double scale =
      std::min(1.0, kLongestSide / static_cast<double>(std::max(picture.width, picture.height)));
  if (scale < 1) {
    reduced.resize(std::max(1, static_cast<int>(picture.width * scale)),
                   std::max(1, static_cast<int>(picture.height * scale)));
    small = reduced.picture();
    libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, reduced.row(0),
                       small.stride, small.width, small.height, libyuv::kFilterBox);
  }
  Grid grid = gridOf(small);
  std::vector<Quad> regions;
  for (int row = 0; row < grid.rows; ++row) {
    for (int column = 0; column < grid.columns; ++column) {
      const Block& block = grid.at(column, row);
      if (block.taken || block.weight == 0) continue;
      const Quad rectangle = rectangleOf(clusterFrom(grid, column, row), grid.blockSide);
      if (areaOf(rectangle) > 0) regions.push_back(scaledAndMoved(rectangle, 1 / scale, {}));
    }
  }
  std::sort(regions.begin(), regions.end(),
            [](const Quad& first, const Quad& second) { return areaOf(first) > areaOf(second); });
  if (regions.size() > kMostRegions) regions.resize(kMostRegions);
  return regions;
}

}  // namespace nivlo
