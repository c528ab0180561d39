#include "linux/codes/BullseyeFinder.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

constexpr std::size_t kMostBullseyes = 3;
// Bounds the work on a picture of noise.
constexpr int kMostCandidates = 8;
// Across the middle, alternately dark and light, each a module wide; larger codes have more.
constexpr int kRuns = 7;
constexpr double kNarrowestRun = 1.5;
constexpr int kTilesAcross = 16;
constexpr int kRowsLookedAt = 360;
constexpr int kRays = 96;
constexpr double kStep = 0.5;

/// What is dark and what is light near a place: the mean around it.
class Threshold {
 public:
  explicit Threshold(const LumaPicture& picture)
      : side_(std::max(4, std::min(picture.width, picture.height) / kTilesAcross)) {
    columns_ = std::max(1, picture.width / side_);
    rows_ = std::max(1, picture.height / side_);
    LumaBuffer tiles;
    tiles.resize(columns_, rows_);
    libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, tiles.row(0), columns_,
                       columns_, rows_, libyuv::kFilterBox);
    means_.resize(columns_, rows_);
    for (int y = 0; y < rows_; ++y) {
      for (int x = 0; x < columns_; ++x) means_.row(y)[x] = meanAround(tiles, x, y);
    }
  }

  int at(int x, int y) const {
    return means_.picture().row(std::min(y / side_, rows_ - 1))[std::min(x / side_, columns_ - 1)];
  }
  int tileSide() const { return side_; }

 private:
  std::uint8_t meanAround(LumaBuffer& tiles, int column, int row) const {
    int sum = 0;
    int count = 0;
    for (int y = std::max(0, row - 1); y <= std::min(rows_ - 1, row + 1); ++y) {
      for (int x = std::max(0, column - 1); x <= std::min(columns_ - 1, column + 1); ++x, ++count)
        sum += tiles.row(y)[x];
    }
    return static_cast<std::uint8_t>(sum / count);
  }

  int side_;
  int columns_;
  int rows_;
  LumaBuffer means_;
};

/// Whether the edges bound runs of about equal width. Ink that ran makes dark runs wider and light ones
/// narrower, so a run is compared together with its neighbour.
bool areEven(const int* edges) {
  const int width = edges[kRuns] - edges[0];
  if (width < kNarrowestRun * kRuns) return false;
  const int room = std::max(kRuns, width / 2);
  for (int i = 0; i + 1 < kRuns; ++i) {
    if (std::abs((edges[i + 2] - edges[i]) * kRuns - 2 * width) > room) return false;
  }
  return true;
}

struct Candidate {
  CGPoint centre;
  double module = 0;
};

/// Brightness between pixels; the border outside the picture.
double lumaAt(const LumaPicture& picture, CGPoint at) {
  const double x = std::clamp(at.x, 0.0, picture.width - 1.001);
  const double y = std::clamp(at.y, 0.0, picture.height - 1.001);
  const int left = static_cast<int>(x);
  const int top = static_cast<int>(y);
  const std::uint8_t* upper = picture.row(top) + left;
  const std::uint8_t* lower = picture.row(std::min(top + 1, picture.height - 1)) + left;
  const int right = left + 1 < picture.width ? 1 : 0;
  const double above = upper[0] + (x - left) * (upper[right] - upper[0]);
  const double below = lower[0] + (x - left) * (lower[right] - lower[0]);
  return above + (y - top) * (below - above);
}

/// The distances from `centre` at which brightness crosses `threshold`, the first `count` of them.
std::vector<double> crossings(const LumaPicture& picture, CGPoint centre, CGPoint direction, double threshold,
                              std::size_t count, double farthest) {
  std::vector<double> result;
  double last = lumaAt(picture, centre) - threshold;
  for (double distance = kStep; distance < farthest && result.size() < count; distance += kStep) {
    const double here =
        lumaAt(picture, {centre.x + direction.x * distance, centre.y + direction.y * distance}) - threshold;
    if ((here < 0) != (last < 0)) result.push_back(distance - kStep * here / (here - last));
    last = here;
  }
  return result;
}

struct Line {
  CGPoint point;
  CGPoint direction;
};

Line fittedLine(const std::vector<CGPoint>& points) {
  CGPoint mean;
  for (const CGPoint& point : points) mean = {mean.x + point.x, mean.y + point.y};
  const auto count = static_cast<double>(points.size());
  mean = {mean.x / count, mean.y / count};
  double xx = 0, yy = 0, xy = 0;
  for (const CGPoint& point : points) {
    xx += (point.x - mean.x) * (point.x - mean.x);
    yy += (point.y - mean.y) * (point.y - mean.y);
    xy += (point.x - mean.x) * (point.y - mean.y);
  }
  const double angle = 0.5 * std::atan2(2 * xy, xx - yy);
  return {mean, {std::cos(angle), std::sin(angle)}};
}

std::optional<CGPoint> intersection(const Line& first, const Line& second) {
  const double cross = first.direction.x * second.direction.y - first.direction.y * second.direction.x;
  if (std::abs(cross) < 0.3) return std::nullopt;
  const double dx = second.point.x - first.point.x;
  const double dy = second.point.y - first.point.y;
  const double along = (dx * second.direction.y - dy * second.direction.x) / cross;
  return CGPoint{first.point.x + along * first.direction.x, first.point.y + along * first.direction.y};
}

/// The four-sided shape whose outline the points follow, in their order; nothing where they do not follow
/// one.
std::optional<Quad> fittedQuad(const std::vector<CGPoint>& points, CGPoint centre) {
  const int count = static_cast<int>(points.size());
  const auto farthestFrom = [&](CGPoint from) {
    return static_cast<int>(std::max_element(points.begin(), points.end(),
                                             [&](CGPoint a, CGPoint b) {
                                               return distanceBetween(a, from) < distanceBetween(b, from);
                                             }) -
                            points.begin());
  };
  const int first = farthestFrom(centre);
  const int third = farthestFrom(points[first]);
  const auto farthestAside = [&](int from, int to) {
    const CGPoint a = points[from];
    const CGPoint b = points[to];
    double most = -1;
    int best = from;
    for (int i = (from + 1) % count; i != to; i = (i + 1) % count) {
      const double aside = std::abs((b.x - a.x) * (points[i].y - a.y) - (b.y - a.y) * (points[i].x - a.x));
      if (aside > most) {
        most = aside;
        best = i;
      }
    }
    return best;
  };
  const std::array<int, 4> corners = {first, farthestAside(first, third), third, farthestAside(third, first)};
  std::array<Line, 4> sides;
  for (int i = 0; i < 4; ++i) {
    const int from = corners[i];
    const int length = (corners[(i + 1) % 4] - from + count) % count;
    const int margin = std::max(1, length / 8);
    std::vector<CGPoint> onSide;
    for (int k = margin; k <= length - margin; ++k) onSide.push_back(points[(from + k) % count]);
    if (onSide.size() < 4) return std::nullopt;
    sides[i] = fittedLine(onSide);
    const CGPoint normal{-sides[i].direction.y, sides[i].direction.x};
    double squares = 0;
    for (const CGPoint& point : onSide) {
      const double off = normal.x * (point.x - sides[i].point.x) + normal.y * (point.y - sides[i].point.y);
      squares += off * off;
    }
    const double size = distanceBetween(points[first], points[third]);
    if (std::sqrt(squares / static_cast<double>(onSide.size())) > 0.04 * size) return std::nullopt;
  }
  Quad quad;
  for (int i = 0; i < 4; ++i) {
    const auto corner = intersection(sides[(i + 3) % 4], sides[i]);
    if (!corner) return std::nullopt;
    quad[i] = *corner;
  }
  return quad;
}

/// The square whose edge every ray from the centre crosses as its `edge`th.
std::optional<Quad> squareAt(const LumaPicture& picture, const Candidate& candidate, double threshold,
                             int edge) {
  std::vector<CGPoint> points;
  // A diagonal of a square seen aslant is up to three times as long as half its side.
  const double farthest = candidate.module * (edge - 0.5) * 3;
  int lost = 0;
  for (int ray = 0; ray < kRays; ++ray) {
    const double angle = 2 * std::numbers::pi * ray / kRays;
    const CGPoint direction{std::cos(angle), std::sin(angle)};
    const auto distances = crossings(picture, candidate.centre, direction, threshold, edge, farthest);
    if (static_cast<int>(distances.size()) < edge) {
      if (++lost > kRays / 4) return std::nullopt;
      continue;
    }
    points.push_back({candidate.centre.x + direction.x * distances.back(),
                      candidate.centre.y + direction.y * distances.back()});
  }
  return fittedQuad(points, candidate.centre);
}

/// Whether the column through the candidate shows the same runs as the row did.
bool isEvenUpright(const LumaPicture& picture, const Candidate& candidate, int threshold) {
  const int x = static_cast<int>(candidate.centre.x);
  const int farthest = static_cast<int>(candidate.module * kRuns);
  int edges[kRuns + 1];
  for (const int direction : {-1, 1}) {
    int y = static_cast<int>(candidate.centre.y);
    const int end = std::clamp(y + direction * farthest, 0, picture.height - 1);
    bool wasDark = picture.row(y)[x] < threshold;
    int found = 0;
    for (; y != end && found < 4; y += direction) {
      const bool isDark = picture.row(y)[x] < threshold;
      if (isDark != wasDark) {
        edges[direction < 0 ? 3 - found : 4 + found] = direction < 0 ? y + 1 : y;
        ++found;
      }
      wasDark = isDark;
    }
    if (found < 4) return false;
  }
  return areEven(edges);
}

std::optional<Bullseye> bullseyeAt(const LumaPicture& picture, const Candidate& candidate, int threshold) {
  const bool light = lumaAt(picture, candidate.centre) > threshold;
  const auto inner = squareAt(picture, candidate, threshold, 4);
  const auto innermost = inner ? squareAt(picture, candidate, threshold, 2) : std::nullopt;
  if (!innermost || std::abs(std::sqrt(areaOf(*innermost) / areaOf(*inner)) - 3.0 / 7) > 0.1)
    return std::nullopt;
  Bullseye bullseye{*inner, 7, light};
  // Codes of more than four layers have two squares more, which tell the perspective better.
  const auto outer = squareAt(picture, candidate, threshold, 6);
  const double ratio = outer ? std::sqrt(areaOf(*outer) / areaOf(*inner)) : 0;
  if (std::abs(ratio - 11.0 / 7) < 0.12) bullseye = {*outer, 11, light};
  return bullseye;
}

}  // namespace

std::vector<Bullseye> findBullseyes(const LumaPicture& picture) {
  std::vector<Bullseye> found;
  const Threshold threshold(picture);
  const int step = std::max(1, picture.height / kRowsLookedAt);
  int candidates = 0;
  std::vector<int> edges;
  for (int y = step / 2; y < picture.height; y += step) {
    edges.assign(1, 0);
    const std::uint8_t* row = picture.row(y);
    bool wasDark = row[0] < threshold.at(0, y);
    for (int left = 0; left < picture.width; left += threshold.tileSide()) {
      const int limit = threshold.at(left, y);
      const int right = std::min(picture.width, left + threshold.tileSide());
      for (int x = left; x < right; ++x) {
        const bool isDark = row[x] < limit;
        if (isDark != wasDark) edges.push_back(x);
        wasDark = isDark;
      }
    }
    edges.push_back(picture.width);
    for (std::size_t i = 0; i + kRuns < edges.size(); ++i) {
      if (!areEven(&edges[i])) continue;
      const Candidate candidate{{(edges[i + 3] + edges[i + 4] - 1) / 2.0, static_cast<double>(y)},
                                static_cast<double>(edges[i + kRuns] - edges[i]) / kRuns};
      const bool known = std::any_of(found.begin(), found.end(), [&](const Bullseye& other) {
        return distanceBetween(centreOf(other.outline), candidate.centre) < 4 * candidate.module;
      });
      const int limit = threshold.at(static_cast<int>(candidate.centre.x), y);
      if (known || !isEvenUpright(picture, candidate, limit)) continue;
      if (const auto bullseye = bullseyeAt(picture, candidate, limit)) found.push_back(*bullseye);
      if (found.size() == kMostBullseyes || ++candidates == kMostCandidates) return found;
    }
  }
  return found;
}

}  // namespace nivlo
