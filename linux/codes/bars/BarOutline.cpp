#include "linux/codes/bars/BarOutline.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace nivlo {

namespace {

constexpr int kSamples = 256;
// A line that correlates with the known scan line at least this much shows the same bars.
constexpr double kMinCorrelation = 0.6;
// Noise may spoil single lines of a code.
constexpr int kMaxMisses = 3;
// Heights are relative to the code's length. No code that a camera sees is taller than the maximum.
constexpr double kMinHalfHeight = 1.0 / 24;
constexpr double kMaxHalfHeight = 1.5;
// Bars that were followed over less do not tell their direction.
constexpr double kMinHeightForDirection = 0.1;
constexpr int kStepsPerLength = 128;

CGPoint plus(CGPoint point, CGPoint direction, double distance) {
  return {point.x + direction.x * distance, point.y + direction.y * distance};
}

/// Samples luma along the line, less its mean, as a vector of length 1. Empty if the line leaves the picture
/// or is of one brightness.
std::vector<float> profile(const LumaPicture& picture, CGPoint start, CGPoint end) {
  std::vector<float> samples(kSamples);
  float sum = 0;
  for (int i = 0; i < kSamples; ++i) {
    const double along = static_cast<double>(i) / (kSamples - 1);
    const int x = static_cast<int>(std::lround(start.x + (end.x - start.x) * along));
    const int y = static_cast<int>(std::lround(start.y + (end.y - start.y) * along));
    if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) {
      return {};
    }
    samples[i] = picture.row(y)[x];
    sum += samples[i];
  }
  float squares = 0;
  for (float& sample : samples) {
    sample -= sum / kSamples;
    squares += sample * sample;
  }
  if (squares == 0) {
    return {};
  }
  for (float& sample : samples) {
    sample /= std::sqrt(squares);
  }
  return samples;
}

/// From -1 to 1; 0 if one of the profiles is empty.
double correlation(const std::vector<float>& first, const std::vector<float>& second) {
  if (first.empty() || second.empty()) {
    return 0;
  }
  double sum = 0;
  for (int i = 0; i < kSamples; ++i) {
    sum += first[i] * second[i];
  }
  return sum;
}

struct ScanLine {
  CGPoint start;
  CGPoint end;
  CGPoint along;  ///< unit vector from start to end
  double length = 0;

  /// Returns the line moved by `distance` in the direction `down`, and by `lean` along itself.
  ScanLine moved(CGPoint down, double distance, double lean) const {
    return {plus(plus(start, down, distance), along, lean), plus(plus(end, down, distance), along, lean),
            along, length};
  }
};

enum class End { Top, Bottom };

/// Returns the farthest line towards that end of the bars which still shows the bars of `line`.
ScanLine lastLineWithBars(const LumaPicture& picture, const ScanLine& line, End end) {
  const double sign = end == End::Bottom ? 1 : -1;
  const CGPoint down{-line.along.y * sign, line.along.x * sign};
  const std::vector<float> bars = profile(picture, line.start, line.end);
  const double step = std::max(1.0, line.length / kStepsPerLength);
  const double smallest = std::max(2.0, line.length * kMinHalfHeight);
  ScanLine last = line.moved(down, smallest, 0);
  double lean = 0;
  int misses = 0;
  for (double distance = step; distance < line.length * kMaxHalfHeight; distance += step) {
    double best = 0;
    double bestLean = lean;
    for (const double candidate : {lean, lean - step / 2, lean + step / 2}) {
      const ScanLine moved = line.moved(down, distance, candidate);
      const double similarity = correlation(bars, profile(picture, moved.start, moved.end));
      if (similarity > best) {
        best = similarity;
        bestLean = candidate;
      }
    }
    if (best < kMinCorrelation) {
      if (++misses > kMaxMisses) {
        break;
      }
      continue;
    }
    misses = 0;
    lean = bestLean;
    last = line.moved(down, std::max(distance, smallest), lean);
  }
  return last;
}

/// Returns `line` turned about its middle so that it crosses the bars at right angles. Their direction is
/// known from the lines at their tops and bottoms.
ScanLine straightened(const ScanLine& line, const ScanLine& top, const ScanLine& bottom) {
  const double dx = bottom.start.x - top.start.x;
  const double dy = bottom.start.y - top.start.y;
  const double height = std::hypot(dx, dy);
  const CGPoint along{dy / height, -dx / height};
  const double length = line.length * (along.x * line.along.x + along.y * line.along.y);
  const CGPoint middle{(line.start.x + line.end.x) / 2, (line.start.y + line.end.y) / 2};
  return {plus(middle, along, -length / 2), plus(middle, along, length / 2), along, length};
}

}  // namespace

Quad barOutline(const LumaPicture& picture, CGPoint start, CGPoint end) {
  const double length = std::hypot(end.x - start.x, end.y - start.y);
  if (length == 0) {
    return {start, start, start, start};
  }
  ScanLine line{start, end, {(end.x - start.x) / length, (end.y - start.y) / length}, length};
  ScanLine top = lastLineWithBars(picture, line, End::Top);
  ScanLine bottom = lastLineWithBars(picture, line, End::Bottom);
  if (std::hypot(bottom.start.x - top.start.x, bottom.start.y - top.start.y) >=
      length * kMinHeightForDirection) {
    line = straightened(line, top, bottom);
    top = lastLineWithBars(picture, line, End::Top);
    bottom = lastLineWithBars(picture, line, End::Bottom);
  }
  return {top.start, top.end, bottom.end, bottom.start};
}

}  // namespace nivlo
