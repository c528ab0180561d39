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

// A code that a row of three does not show is not there.
constexpr int kRowStep = 3;
// Means of the digits' correlations: of a row, and of all rows that count.
constexpr float kLeastOfRow = 0.82F;
constexpr float kLeastMean = 0.84F;
constexpr float kLeastDigit = 0.6F;

constexpr std::size_t kFewestRows = 2;

/// What it takes to believe a number.
struct Demand {
  double rows;  ///< of the picture's, that agree
  /// How much worse the next best number fits, less what digits that may not stand together fit better, all
  /// measured by what the best lacks of fitting fully; it grows with how much more likely the best is.
  float lead;
  float certainLead;
};

/// Codes of fewer digits are found by chance, in print and in longer codes. Photos of other things, at
/// several sizes and turned, gave no wrong number that comes near to being certain.
Demand demandOf(const RetailSymbol& symbol) {
  constexpr Demand kLong{0.25, 1.2F, 1.6F};
  constexpr Demand kShort{0.5, 2, 3};
  return symbol.digits.size() == 12 ? kLong : kShort;
}

/// What the rows say of a symbol in one direction.
struct Evidence {
  struct Row {
    int y;
    SymbolFit fit;
    std::string text;
  };

  DigitScores sum{};
  std::vector<Row> rows;
};

/// Of the digits that fit best, whether they may stand together or not.
float bestSum(const RetailSymbol& symbol, const DigitScores& scores) {
  float sum = 0;
  for (std::size_t i = 0; i < symbol.digits.size(); ++i) {
    sum += *std::max_element(scores[i].begin(), scores[i].end());
  }
  return sum;
}

/// From the uppermost row to the lowermost.
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

std::optional<Reading> readingOf(const RetailSymbol& symbol, const Evidence& evidence, int height) {
  if (evidence.rows.empty()) {
    return std::nullopt;
  }
  const RetailNumber number = bestNumber(symbol, evidence.sum);
  std::vector<Evidence::Row> agreeing = evidence.rows;
  std::erase_if(agreeing, [&](const Evidence::Row& row) { return row.text != number.text; });
  const Demand demand = demandOf(symbol);
  if (agreeing.size() < std::max<std::size_t>(kFewestRows, std::lround(demand.rows * height))) {
    return std::nullopt;
  }

  const auto rows = static_cast<float>(evidence.rows.size());
  const auto digits = static_cast<float>(symbol.digits.size());
  const float missing = digits * rows - number.score;
  const float ruledOut = bestSum(symbol, evidence.sum) - number.score;
  const float lead = (number.score - number.runnerUp - ruledOut) * digits / missing;
  if (missing > (1 - kLeastMean) * digits * rows || number.worstDigit < kLeastDigit * rows ||
      lead < demand.lead) {
    return std::nullopt;
  }
  return Reading{symbol.type, number.text, outlineOf(agreeing), true, lead >= demand.certainLead};
}

/// Looks for one symbol in row after row.
class SymbolReader {
 public:
  explicit SymbolReader(const RetailSymbol& symbol) : symbol_(symbol) {}

  void look(const BarProfile& profile, int y) {
    std::array<Match, 2> best;
    for (const SymbolFit& fit : findFits(profile, symbol_)) {
      consider(profile, fit, best);
      if (symbol_.isSymmetrical) {
        consider(profile, {fit.end, fit.start, fit.bulge, fit.score}, best);
      }
    }
    for (std::size_t way = 0; way < best.size(); ++way) {
      if (best[way].sum >= kLeastOfRow * static_cast<float>(symbol_.digits.size())) {
        note(best[way], y, evidence_[way]);
      }
    }
  }

  bool sawAny() const { return !evidence_[0].rows.empty() || !evidence_[1].rows.empty(); }

  /// `height` is that of the picture, in rows.
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

  void consider(const BarProfile& profile, const SymbolFit& fit, std::array<Match, 2>& best) const {
    Match match{fit, matchDigits(profile, symbol_, fit)};
    match.sum = bestSum(symbol_, match.scores);
    Match& known = best[fit.start > fit.end];
    if (match.sum > known.sum) {
      known = match;
    }
  }

  void note(const Match& match, int y, Evidence& evidence) const {
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
        reader.look(profiles[y], y);
      }
      if (!reader.sawAny()) {
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
