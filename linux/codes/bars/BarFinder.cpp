#include "linux/codes/bars/BarFinder.hpp"

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
// Of all blocks within reach.
constexpr int kFewestNeighbours = 12;
constexpr std::size_t kMostJoined = 4;
// Between parts of one code that wide or blurred bars keep apart, of the length of the larger; and what of
// their height they have in common.
constexpr double kMostGap = 0.25;
constexpr double kLeastShared = 0.6;
// Of PDF417 only the patterns at both ends may show, as high as each other.
constexpr double kMostGapOfEnds = 12;
constexpr double kLeastHeightOfEnds = 0.8;

/// The structure tensor's direction and strength in one block.
struct Block {
  double angle = 0;  ///< across the edges, in radians, 0..pi
  float weight = 0;  ///< 0 where there are no edges of one direction
  int cluster = 0;   ///< that it belongs to, counted from 1
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
  if (energy < kLeastEnergy * static_cast<float>(side * side) || directed < kLeastCoherence * energy) {
    return {};
  }
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
    for (int column = 0; column < grid.columns; ++column) {
      grid.blocks.push_back(
          blockOf(picture, 1 + column * grid.blockSide, 1 + row * grid.blockSide, grid.blockSide));
    }
  }
  return grid;
}

double turnBetween(double first, double second) {
  const double turn = std::abs(first - second);
  return std::min(turn, std::numbers::pi - turn);
}

/// Blocks that hang together and agree on a direction.
struct Cluster {
  int number = 0;
  std::vector<std::pair<int, int>> places;
  double cosines = 0;  ///< sums over twice the angle, for which 0 and 180 degrees are one
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
    const double least = kLeastOfMean * cluster.meanWeight();
    for (int y = std::max(0, fromRow - kReach); y <= std::min(grid.rows - 1, fromRow + kReach); ++y) {
      for (int x = std::max(0, fromColumn - kReach); x <= std::min(grid.columns - 1, fromColumn + kReach);
           ++x) {
        Block& block = grid.at(x, y);
        if (block.cluster || block.weight < least || turnBetween(block.angle, angle) > kMostTurn) {
          continue;
        }
        cluster.add(x, y, block);
      }
    }
  }
  return cluster;
}

/// Without what hangs on to bars only by a line, such as the edge of a label.
Cluster dense(Grid& grid, const Cluster& cluster) {
  Cluster result{cluster.number};
  for (const auto& [column, row] : cluster.places) {
    int neighbours = 0;
    for (int y = std::max(0, row - kReach); y <= std::min(grid.rows - 1, row + kReach); ++y) {
      for (int x = std::max(0, column - kReach); x <= std::min(grid.columns - 1, column + kReach); ++x) {
        neighbours += grid.at(x, y).cluster == cluster.number;
      }
    }
    if (neighbours >= kFewestNeighbours) {
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

/// A frame of reference for places in the picture, turned by an angle.
struct Axes {
  CGPoint across;

  double u(CGPoint point) const { return across.x * point.x + across.y * point.y; }
  double v(CGPoint point) const { return across.x * point.y - across.y * point.x; }
  CGPoint point(double u, double v) const {
    return {across.x * u - across.y * v, across.y * u + across.x * v};
  }
  Quad rectangle(const Interval& u, const Interval& v) const {
    return {point(u.low, v.low), point(u.high, v.low), point(u.high, v.high), point(u.low, v.high)};
  }
};

/// The cluster's rectangle in pixels of the picture that the grid was made of; of no size where it is too
/// short or too sparse to be a code.
Quad rectangleOf(const Cluster& cluster, int blockSide) {
  double angle = cluster.angle();
  if (angle > std::numbers::pi / 2) {
    angle -= std::numbers::pi;
  }
  const Axes axes{{std::cos(angle), std::sin(angle)}};
  const double half = blockSide / 2.0;
  Interval u, v;
  for (const auto& [column, row] : cluster.places) {
    const CGPoint centre{1 + column * blockSide + half, 1 + row * blockSide + half};
    for (const double by : {-half, half}) {
      u.include(axes.u(centre) + by);
      v.include(axes.v(centre) + by);
    }
  }
  const double filled = static_cast<double>(cluster.places.size()) * blockSide * blockSide;
  if (u.length() < kFewestBlocksAcross * blockSide || filled < kLeastFilled * u.length() * v.length()) {
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

/// The axis across the bars runs from the first to the second, within 90 degrees of left to right.
Axes axesThrough(CGPoint first, CGPoint second) {
  const double length = distanceBetween(first, second) * (second.x < first.x ? -1 : 1);
  return {{(second.x - first.x) / length, (second.y - first.y) / length}};
}

double turnBetween(const Axes& first, const Axes& second) {
  return turnBetween(std::abs(std::atan2(second.v(first.across), second.u(first.across))), 0);
}

/// The rectangle around the patterns at both ends of a PDF417; of no size where they cannot be that. How they
/// lie to each other tells the direction better than their bars do.
Quad joinedEnds(const Quad& first, const Quad& second, const Axes& axes) {
  const Axes through = axesThrough(centreOf(first), centreOf(second));
  const Extent one = extentOf(first, through);
  const Extent other = extentOf(second, through);
  const bool areHigh = one.v.length() > one.u.length() && other.v.length() > other.u.length();
  const double ratio = one.v.length() / other.v.length();
  const bool areAlike = ratio >= kLeastHeightOfEnds && ratio * kLeastHeightOfEnds <= 1;
  if (!areHigh || !areAlike || turnBetween(axes, through) > kMostTurn) {
    return {};
  }
  return rectangleAround(first, second, through);
}

/// The rectangle around two parts of one code, of which the first is the larger; of no size where they cannot
/// be that.
Quad joined(const Quad& first, const Quad& second) {
  const Axes axes = axesThrough(first[0], first[1]);
  if (turnBetween(axes, axesThrough(second[0], second[1])) > kMostTurn) {
    return {};
  }
  const Extent one = extentOf(first, axes);
  const Extent other = extentOf(second, axes);
  const double gap = std::max(one.u.low, other.u.low) - std::min(one.u.high, other.u.high);
  const double shared = std::min(one.v.high, other.v.high) - std::max(one.v.low, other.v.low);
  const double height = std::max(one.v.length(), other.v.length());
  const double length = one.u.length();
  if (gap > kMostGapOfEnds * length) {
    return {};
  }
  if (gap > kMostGap * length) {
    return joinedEnds(first, second, axes);
  }
  return shared >= kLeastShared * height ? rectangleAround(first, second, axes) : Quad{};
}

bool isLarger(const Quad& first, const Quad& second) { return areaOf(first) > areaOf(second); }

/// Also what two of the largest would be together: whether they are one code shows only when it is read.
void addJoined(std::vector<Quad>& regions) {
  const std::size_t count = std::min(kMostJoined, regions.size());
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = i + 1; k < count; ++k) {
      const Quad whole = joined(regions[i], regions[k]);
      if (areaOf(whole) > 0) {
        regions.push_back(whole);
      }
    }
  }
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
  int clusters = 0;
  for (int row = 0; row < grid.rows; ++row) {
    for (int column = 0; column < grid.columns; ++column) {
      const Block& block = grid.at(column, row);
      if (block.cluster || block.weight == 0) {
        continue;
      }
      const Cluster cluster = clusterFrom(grid, column, row, ++clusters);
      Quad rectangle = rectangleOf(cluster, grid.blockSide);
      if (areaOf(rectangle) == 0) {
        rectangle = rectangleOf(dense(grid, cluster), grid.blockSide);
      }
      if (areaOf(rectangle) > 0) {
        regions.push_back(scaledAndMoved(rectangle, 1 / scale, {}));
      }
    }
  }
  std::sort(regions.begin(), regions.end(), isLarger);
  addJoined(regions);
  std::sort(regions.begin(), regions.end(), isLarger);
  if (regions.size() > kMostRegions) {
    regions.resize(kMostRegions);
  }
  return regions;
}

}  // namespace nivlo
