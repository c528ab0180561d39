#include "linux/codes/bars/BarFinder.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <utility>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

constexpr std::size_t kMaxRegions = 3;
// Longer edge in pixels that pictures are reduced to. Bars that a decoder can read still show at this size.
constexpr int kMaxLength = 960;
constexpr int kBlocksAcross = 64;
constexpr int kMinBlockSize = 4;
// Mean squared difference between pixels two apart. A block with less holds blank paper or noise.
constexpr float kMinEnergy = 100;
// Coherence is 1 if all edges of a block are parallel and 0 if they run in all directions alike.
constexpr float kMinCoherence = 0.6F;
constexpr double kMaxTurn = 15 * std::numbers::pi / 180;
// Edge strength that a block needs to join a cluster, relative to the cluster's mean. The print beside a code
// has fewer edges than its bars.
constexpr double kMinRelativeWeight = 0.6;
// Blocks, each way, over which a cluster grows from one block to the next. A wide white bar seen from close
// leaves blocks without an edge, which must not divide the cluster.
constexpr int kReach = 2;
constexpr double kMinBlocksAcross = 5;
// Part of its rectangle that a cluster must fill.
constexpr double kMinFilled = 0.25;
// Blocks of its own cluster that a block needs within reach, itself included, to be dense.
constexpr int kMinNeighbours = 12;
constexpr std::size_t kMaxJoined = 4;
// Wide or blurred bars can divide a code into parts. The gap between parts is relative to the length of the
// larger one, and the height that they share is relative to the taller one.
constexpr double kMaxGap = 0.25;
constexpr double kMinSharedHeight = 0.6;
// A PDF417 may show bars only in its start and stop patterns. They are far apart but about equally high.
constexpr double kMaxGapOfEnds = 12;
constexpr double kMinHeightRatioOfEnds = 0.8;

/// Direction and strength of the edges in one block, from its structure tensor.
struct Block {
  double angle = 0;  ///< across the edges, in radians, 0..pi
  float weight = 0;  ///< 0 if the block has no edges, or edges of several directions
  int cluster = 0;   ///< number of the cluster that it belongs to, or 0
};

struct Grid {
  int blockSize = 0;  ///< pixels
  int columns = 0;
  int rows = 0;
  std::vector<Block> blocks;

  Block& at(int column, int row) { return blocks[static_cast<std::size_t>(row) * columns + column]; }
};

Block blockOf(const LumaPicture& picture, int left, int top, int size) {
  int xx = 0;
  int yy = 0;
  int xy = 0;
  for (int y = top; y < top + size; ++y) {
    const std::uint8_t* above = picture.row(y - 1);
    const std::uint8_t* here = picture.row(y);
    const std::uint8_t* below = picture.row(y + 1);
    for (int x = left; x < left + size; ++x) {
      const int dx = here[x + 1] - here[x - 1];
      const int dy = below[x] - above[x];
      xx += dx * dx;
      yy += dy * dy;
      xy += dx * dy;
    }
  }
  const auto energy = static_cast<float>(xx + yy);
  const float directed = std::hypot(static_cast<float>(xx - yy), static_cast<float>(2 * xy));
  if (energy < kMinEnergy * static_cast<float>(size * size) || directed < kMinCoherence * energy) {
    return {};
  }
  const double angle = 0.5 * std::atan2(2.0 * xy, static_cast<double>(xx - yy));
  return {angle < 0 ? angle + std::numbers::pi : angle, std::sqrt(directed)};
}

Grid gridOf(const LumaPicture& picture) {
  Grid grid;
  grid.blockSize = std::max(kMinBlockSize, std::max(picture.width, picture.height) / kBlocksAcross);
  grid.columns = std::max(0, (picture.width - 2) / grid.blockSize);
  grid.rows = std::max(0, (picture.height - 2) / grid.blockSize);
  grid.blocks.reserve(static_cast<std::size_t>(grid.columns) * grid.rows);
  for (int row = 0; row < grid.rows; ++row) {
    for (int column = 0; column < grid.columns; ++column) {
      grid.blocks.push_back(
          blockOf(picture, 1 + column * grid.blockSize, 1 + row * grid.blockSize, grid.blockSize));
    }
  }
  return grid;
}

/// Returns the angle between two undirected axes, in radians from 0 to a right angle.
double turnBetween(double first, double second) {
  const double turn = std::abs(first - second);
  return std::min(turn, std::numbers::pi - turn);
}

/// Blocks that lie close together and have edges of one direction.
struct Cluster {
  int number = 0;
  std::vector<std::pair<int, int>> places;  ///< column and row of each block
  // Sums over twice the angle of each block, because angles of 0 and 180 degrees mean the same direction.
  double cosines = 0;
  double sines = 0;

  double angle() const {
    const double angle = 0.5 * std::atan2(sines, cosines);
    return angle < 0 ? angle + std::numbers::pi : angle;
  }
  double meanWeight() const { return std::hypot(cosines, sines) / static_cast<double>(places.size()); }
  void add(int column, int row, Block& block) {
    block.cluster = number;
    places.emplace_back(column, row);
    cosines += block.weight * std::cos(2 * block.angle);
    sines += block.weight * std::sin(2 * block.angle);
  }
};

Cluster clusterFrom(Grid& grid, int column, int row, int number) {
  Cluster cluster{number};
  cluster.add(column, row, grid.at(column, row));
  for (std::size_t i = 0; i < cluster.places.size(); ++i) {
    const auto [fromColumn, fromRow] = cluster.places[i];
    const double angle = cluster.angle();
    const double least = kMinRelativeWeight * cluster.meanWeight();
    for (int y = std::max(0, fromRow - kReach); y <= std::min(grid.rows - 1, fromRow + kReach); ++y) {
      for (int x = std::max(0, fromColumn - kReach); x <= std::min(grid.columns - 1, fromColumn + kReach);
           ++x) {
        Block& block = grid.at(x, y);
        if (block.cluster || block.weight < least || turnBetween(block.angle, angle) > kMaxTurn) {
          continue;
        }
        cluster.add(x, y, block);
      }
    }
  }
  return cluster;
}

/// Returns the cluster without blocks that have few neighbours in it, such as those along the edge of a
/// label.
Cluster dense(Grid& grid, const Cluster& cluster) {
  Cluster result{cluster.number};
  for (const auto& [column, row] : cluster.places) {
    int neighbours = 0;
    for (int y = std::max(0, row - kReach); y <= std::min(grid.rows - 1, row + kReach); ++y) {
      for (int x = std::max(0, column - kReach); x <= std::min(grid.columns - 1, column + kReach); ++x) {
        neighbours += grid.at(x, y).cluster == cluster.number;
      }
    }
    if (neighbours >= kMinNeighbours) {
      result.add(column, row, grid.at(column, row));
    }
  }
  return result;
}

struct Interval {
  double low = HUGE_VAL;
  double high = -HUGE_VAL;

  double length() const { return high - low; }
  void include(double position) {
    low = std::min(low, position);
    high = std::max(high, position);
  }
};

/// Coordinates that are turned against the picture: u runs across the bars, v along them.
struct Axes {
  CGPoint across;  ///< unit vector of u

  double u(CGPoint point) const { return across.x * point.x + across.y * point.y; }
  double v(CGPoint point) const { return across.x * point.y - across.y * point.x; }
  CGPoint point(double u, double v) const {
    return {across.x * u - across.y * v, across.y * u + across.x * v};
  }
  Quad rectangle(const Interval& u, const Interval& v) const {
    return {point(u.low, v.low), point(u.high, v.low), point(u.high, v.high), point(u.low, v.high)};
  }
};

/// Returns the rectangle around the cluster, in pixels of the picture that the grid was made of. It has no
/// area if the cluster is too short or too sparse to be a code.
Quad rectangleOf(const Cluster& cluster, int blockSize) {
  double angle = cluster.angle();
  if (angle > std::numbers::pi / 2) {
    angle -= std::numbers::pi;
  }
  const Axes axes{{std::cos(angle), std::sin(angle)}};
  const double half = blockSize / 2.0;
  Interval u, v;
  for (const auto& [column, row] : cluster.places) {
    const CGPoint centre{1 + column * blockSize + half, 1 + row * blockSize + half};
    for (const double by : {-half, half}) {
      u.include(axes.u(centre) + by);
      v.include(axes.v(centre) + by);
    }
  }
  const double filled = static_cast<double>(cluster.places.size()) * blockSize * blockSize;
  if (u.length() < kMinBlocksAcross * blockSize || filled < kMinFilled * u.length() * v.length()) {
    return {};
  }
  return axes.rectangle(u, v);
}

struct Extent {
  Interval u, v;
};

Extent extentOf(const Quad& region, const Axes& axes) {
  Extent extent;
  for (const CGPoint& corner : region) {
    extent.u.include(axes.u(corner));
    extent.v.include(axes.v(corner));
  }
  return extent;
}

Quad rectangleAround(const Quad& first, const Quad& second, const Axes& axes) {
  const Extent one = extentOf(first, axes);
  const Extent other = extentOf(second, axes);
  return axes.rectangle({std::min(one.u.low, other.u.low), std::max(one.u.high, other.u.high)},
                        {std::min(one.v.low, other.v.low), std::max(one.v.high, other.v.high)});
}

/// Returns axes whose u runs through both points, within 90 degrees of left to right.
Axes axesThrough(CGPoint first, CGPoint second) {
  const double length = distanceBetween(first, second) * (second.x < first.x ? -1 : 1);
  return {{(second.x - first.x) / length, (second.y - first.y) / length}};
}

double turnBetween(const Axes& first, const Axes& second) {
  return turnBetween(std::abs(std::atan2(second.v(first.across), second.u(first.across))), 0);
}

/// Returns the rectangle around the start and stop patterns of a PDF417, which has no area if the two cannot
/// be that. Its direction is that from one to the other, which is more accurate than that of their bars.
Quad joinedEnds(const Quad& first, const Quad& second, const Axes& axes) {
  const Axes through = axesThrough(centreOf(first), centreOf(second));
  const Extent one = extentOf(first, through);
  const Extent other = extentOf(second, through);
  const bool areTall = one.v.length() > one.u.length() && other.v.length() > other.u.length();
  const double ratio = one.v.length() / other.v.length();
  const bool areEquallyTall = ratio >= kMinHeightRatioOfEnds && ratio * kMinHeightRatioOfEnds <= 1;
  if (!areTall || !areEquallyTall || turnBetween(axes, through) > kMaxTurn) {
    return {};
  }
  return rectangleAround(first, second, through);
}

/// Returns the rectangle around two parts of one code, which has no area if the two cannot be that. The first
/// is the larger.
Quad joined(const Quad& first, const Quad& second) {
  const Axes axes = axesThrough(first[0], first[1]);
  if (turnBetween(axes, axesThrough(second[0], second[1])) > kMaxTurn) {
    return {};
  }
  const Extent one = extentOf(first, axes);
  const Extent other = extentOf(second, axes);
  const double gap = std::max(one.u.low, other.u.low) - std::min(one.u.high, other.u.high);
  const double shared = std::min(one.v.high, other.v.high) - std::max(one.v.low, other.v.low);
  const double height = std::max(one.v.length(), other.v.length());
  const double length = one.u.length();
  if (gap > kMaxGapOfEnds * length) {
    return {};
  }
  if (gap > kMaxGap * length) {
    return joinedEnds(first, second, axes);
  }
  return shared >= kMinSharedHeight * height ? rectangleAround(first, second, axes) : Quad{};
}

bool isLarger(const Quad& first, const Quad& second) { return areaOf(first) > areaOf(second); }

/// Adds what pairs of the largest regions would be together. Whether a pair is one code shows only when it is
/// read, so the regions themselves stay too.
void addJoined(std::vector<Quad>& regions) {
  const std::size_t count = std::min(kMaxJoined, regions.size());
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = i + 1; k < count; ++k) {
      const Quad whole = joined(regions[i], regions[k]);
      if (areaOf(whole) > 0) {
        regions.push_back(whole);
      }
    }
  }
}

/// Returns the picture if it is small enough, else a reduced copy in `buffer`.
LumaPicture reduced(const LumaPicture& picture, double scale, LumaBuffer& buffer) {
  if (scale >= 1) {
    return picture;
  }
  buffer.resize(std::max(1, static_cast<int>(picture.width * scale)),
                std::max(1, static_cast<int>(picture.height * scale)));
  const LumaPicture small = buffer.picture();
  libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, buffer.row(0),
                     small.stride, small.width, small.height, libyuv::kFilterBox);
  return small;
}

/// Returns the rectangles of all clusters, in pixels of the picture that the grid was made of.
std::vector<Quad> regionsOf(Grid& grid) {
  std::vector<Quad> regions;
  int clusters = 0;
  for (int row = 0; row < grid.rows; ++row) {
    for (int column = 0; column < grid.columns; ++column) {
      const Block& block = grid.at(column, row);
      if (block.cluster || block.weight == 0) {
        continue;
      }
      const Cluster cluster = clusterFrom(grid, column, row, ++clusters);
      Quad rectangle = rectangleOf(cluster, grid.blockSize);
      if (areaOf(rectangle) == 0) {
        rectangle = rectangleOf(dense(grid, cluster), grid.blockSize);
      }
      if (areaOf(rectangle) > 0) {
        regions.push_back(rectangle);
      }
    }
  }
  return regions;
}

}  // namespace

std::vector<Quad> findBars(const LumaPicture& picture) {
  const double scale =
      std::min(1.0, kMaxLength / static_cast<double>(std::max(picture.width, picture.height)));
  LumaBuffer buffer;
  Grid grid = gridOf(reduced(picture, scale, buffer));
  std::vector<Quad> regions = regionsOf(grid);
  for (Quad& region : regions) {
    region = scaledAndMoved(region, 1 / scale, {});
  }
  std::sort(regions.begin(), regions.end(), isLarger);
  addJoined(regions);
  std::sort(regions.begin(), regions.end(), isLarger);
  if (regions.size() > kMaxRegions) {
    regions.resize(kMaxRegions);
  }
  return regions;
}

}  // namespace nivlo
