#include "linux/codes/retail/RetailBarsDecoder.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "linux/codes/retail/DigitMatcher.hpp"
#include "linux/codes/retail/SymbolFit.hpp"

namespace nivlo {

namespace {

// A symbol is given up if every third row shows no trace of it.
constexpr int kRowStep = 3;
// The least mean correlation of the digits: in a row, for it to count, and over all rows that count.
constexpr float kMinRowMean = 0.82F;
constexpr float kMinMean = 0.84F;
// The least mean over the rows of any one digit's correlation.
constexpr float kMinDigit = 0.6F;
// Rows that must agree on a number, however few rows the picture has.
constexpr std::size_t kMinRows = 2;

/// The requirements that a number must meet to be accepted.
struct Requirements {
  double rows;        ///< fraction of the picture's rows that must agree on it
  float lead;         ///< to report it, see leadOf
  float certainLead;  ///< to report it as certain
};

/// Shorter numbers are more often found by chance, in print and inside longer codes. With these figures,
/// photos of other things, at several sizes and angles, gave no wrong number that came close to being
/// certain.
Requirements requirementsFor(const RetailSymbol& symbol) {
  constexpr Requirements kLong{0.25, 1.2F, 1.6F};
  constexpr Requirements kShort{0.5, 2, 3};
  return symbol.digits.size() == 12 ? kLong : kShort;
}

/// The evidence that the rows give of a symbol in one direction.
struct Evidence {
  struct Row {
    int y;
    SymbolFit fit;
    std::string text;
  };

  DigitScores sum{};  ///< over the rows
  std::vector<Row> rows;
};

/// Returns the sum of the best score at each place, whether or not those digits may occur together.
float bestSum(const RetailSymbol& symbol, const DigitScores& scores) {
  float sum = 0;
  for (std::size_t i = 0; i < symbol.digits.size(); ++i) {
    sum += *std::max_element(scores[i].begin(), scores[i].end());
  }
  return sum;
}

/// Returns the outline from the uppermost row to the lowermost, clockwise from the symbol's own top left.
Quad outlineOf(const std::vector<Evidence::Row>& rows) {
  const auto [upper, lower] = std::minmax_element(
      rows.begin(), rows.end(), [](const auto& first, const auto& second) { return first.y < second.y; });
  const double top = upper->y;
  const double bottom = lower->y + 1;
  const Quad outline{
      {{upper->fit.start, top}, {upper->fit.end, top}, {lower->fit.end, bottom}, {lower->fit.start, bottom}}};
  if (upper->fit.start < upper->fit.end) {
    return outline;
  }
  return {outline[3], outline[2], outline[1], outline[0]};
}

/// Returns how far the number is ahead of the runner-up, less how far it is behind the digits that fit best
/// but may not occur together. The unit is what the number itself lacks, per digit, of a perfect fit: the
/// better it fits, the more the same difference weighs.
float leadOf(const RetailNumber& number, float unconstrained, float shortfall, float digits) {
  const float ruledOut = unconstrained - number.score;
  return (number.score - number.runnerUp - ruledOut) * digits / shortfall;
}

/// Returns nothing unless the evidence meets the requirements. `height` is the picture's, in rows.
std::optional<Reading> readingOf(const RetailSymbol& symbol, const Evidence& evidence, int height) {
  if (evidence.rows.empty()) {
    return std::nullopt;
  }
  const RetailNumber number = bestNumber(symbol, evidence.sum);
  std::vector<Evidence::Row> agreeing = evidence.rows;
  std::erase_if(agreeing, [&](const Evidence::Row& row) { return row.text != number.text; });
  const Requirements required = requirementsFor(symbol);
  if (agreeing.size() < std::max<std::size_t>(kMinRows, std::lround(required.rows * height))) {
    return std::nullopt;
  }

  const auto rows = static_cast<float>(evidence.rows.size());
  const auto digits = static_cast<float>(symbol.digits.size());
  const float shortfall = digits * rows - number.score;
  const float lead = leadOf(number, bestSum(symbol, evidence.sum), shortfall, digits);
  if (shortfall > (1 - kMinMean) * digits * rows || number.worstDigit < kMinDigit * rows ||
      lead < required.lead) {
    return std::nullopt;
  }
  return Reading{symbol.type, number.text, outlineOf(agreeing), true, lead >= required.certainLead};
}

/// Collects the evidence for one kind of symbol, row by row.
class SymbolReader {
 public:
  explicit SymbolReader(const RetailSymbol& symbol) : symbol_(symbol) {}

  /// Adds the row at `y`, if the symbol fits it well enough, to the evidence for each direction.
  void addRow(const BarProfile& profile, int y) {
    std::array<Match, 2> best;
    for (const SymbolFit& fit : findFits(profile, symbol_)) {
      consider(profile, fit, best);
      if (symbol_.isSymmetrical) {
        consider(profile, {fit.end, fit.start, fit.bulge, fit.score}, best);
      }
    }
    for (std::size_t direction = 0; direction < best.size(); ++direction) {
      if (best[direction].sum >= kMinRowMean * static_cast<float>(symbol_.digits.size())) {
        add(best[direction], y, evidence_[direction]);
      }
    }
  }

  bool hasEvidence() const { return !evidence_[0].rows.empty() || !evidence_[1].rows.empty(); }

  /// Returns the code, if the evidence suffices for one. `height` is the picture's, in rows.
  std::optional<Reading> reading(int height) const {
    auto reading = readingOf(symbol_, evidence_[0], height);
    return reading ? reading : readingOf(symbol_, evidence_[1], height);
  }

 private:
  struct Match {
    SymbolFit fit;
    DigitScores scores{};
    float sum = 0;
  };

  /// Keeps the fit if it matches better than the best one known in its direction.
  void consider(const BarProfile& profile, const SymbolFit& fit, std::array<Match, 2>& best) const {
    Match match{fit, matchDigits(profile, symbol_, fit)};
    match.sum = bestSum(symbol_, match.scores);
    Match& known = best[fit.start > fit.end];
    if (match.sum > known.sum) {
      known = match;
    }
  }

  void add(const Match& match, int y, Evidence& evidence) const {
    for (std::size_t i = 0; i < match.scores.size(); ++i) {
      for (std::size_t column = 0; column < match.scores[i].size(); ++column) {
        evidence.sum[i][column] += match.scores[i][column];
      }
    }
    evidence.rows.push_back({y, match.fit, bestNumber(symbol_, match.scores).text});
  }

  const RetailSymbol& symbol_;
  std::array<Evidence, 2> evidence_;  ///< forwards, backwards
};

std::vector<Reading> readRetailBars(const LumaPicture& picture) {
  if (picture.width < 2) {
    return {};
  }
  std::vector<BarProfile> profiles;
  profiles.reserve(picture.height);
  for (int y = 0; y < picture.height; ++y) {
    profiles.emplace_back(picture.row(y), picture.width);
  }
  for (const RetailSymbol* symbol : {&ean13Symbol(), &ean8Symbol(), &upceSymbol()}) {
    SymbolReader reader(*symbol);
    for (const int first : {1, 0, 2}) {
      for (int y = first; y < picture.height; y += kRowStep) {
        reader.addRow(profiles[y], y);
      }
      if (!reader.hasEvidence()) {
        break;
      }
    }
    if (const auto reading = reader.reading(picture.height)) {
      return {*reading};
    }
  }
  return {};
}

}  // namespace

Decoder retailBars() { return {readRetailBars, costOfPixels(30)}; }

}  // namespace nivlo
