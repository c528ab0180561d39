#include "linux/codes/retail/RetailSymbols.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

// Each digit in set A, as setAModules returns it.
constexpr std::array<unsigned, 10> kSetA = {0b0001101, 0b0011001, 0b0010011, 0b0111101, 0b0100011,
                                            0b0110001, 0b0101111, 0b0111011, 0b0110111, 0b0001011};

// The sets of EAN-13's six leading digits. Their sequence stands for the first digit, which is not drawn.
constexpr std::array<std::string_view, 10> kEAN13Sets = {"AAAAAA", "AABABB", "AABBAB", "AABBBA", "ABAABB",
                                                         "ABBAAB", "ABBBAA", "ABABAB", "ABABBA", "ABBABA"};
// The sets of UPC-E's six digits by check digit, for number system 0. Number system 1 swaps A and B.
constexpr std::array<std::string_view, 10> kUPCESets = {"BBBAAA", "BBABAA", "BBAABA", "BBAAAB", "BABBAA",
                                                        "BAABBA", "BAAABB", "BABABA", "BABAAB", "BAABAB"};

/// `leading` and `trailing` are numbers of digits; `centre` and `end` are guard patterns in modules.
RetailSymbol makeSymbol(const char* type, std::size_t leading, std::string_view centre, std::size_t trailing,
                        std::string_view end) {
  RetailSymbol symbol{type, "101", {}, leading, leading == trailing};
  const auto addDigits = [&](std::size_t count, std::string_view modules) {
    for (std::size_t i = 0; i < count; ++i) {
      symbol.digits.push_back(static_cast<int>(symbol.modules.size()));
      symbol.modules += modules;
    }
  };
  addDigits(leading, "0?????1");
  symbol.modules += centre;
  addDigits(trailing, "1?????0");
  symbol.modules += end;
  return symbol;
}

/// All numbers with the same sequence of sets, and so the same digits that are not drawn.
struct Family {
  std::uint64_t digitsInSetB = 0;         ///< bit i is set if drawn digit i is in set B
  std::array<int, kMaxDigits> weights{};  ///< of the drawn digits in the check sum
  int remainder = 0;                      ///< required of the drawn digits' check sum, modulo 10
  int minLast = 0, maxLast = 9;           ///< the range of the last drawn digit
  std::string prefix, suffix;             ///< the digits that are not drawn
};

/// Drawn digits and the sum of their scores, minus infinity if there are none.
struct ScoredDigits {
  float score = -HUGE_VALF;
  std::uint64_t digits = 0;  ///< as a decimal number
};

/// The highest and the second highest of the scores added.
struct TwoBest {
  ScoredDigits first, second;
  void add(ScoredDigits candidate) {
    if (candidate.score > first.score) {
      second = first;
      first = candidate;
    } else if (candidate.score > second.score) {
      second = candidate;
    }
  }
};

std::uint64_t bitsOf(std::string_view sets) {
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    bits |= static_cast<std::uint64_t>(sets[i] == 'B') << i;
  }
  return bits;
}

std::vector<Family> eanFamilies(std::size_t count) {
  Family family;
  // The last digit is the check digit, of weight one.
  for (std::size_t i = 0; i < count; ++i) {
    family.weights[i] = (count - i) % 2 == 0 ? 3 : 1;
  }
  if (count == 8) {
    return {family};
  }
  std::vector<Family> families;
  for (int first = 0; first < 10; ++first) {
    family.digitsInSetB = bitsOf(kEAN13Sets[first]);
    family.remainder = (10 - first) % 10;
    family.prefix = std::to_string(first);
    families.push_back(family);
  }
  return families;
}

/// UPC-E leaves out zeros of a UPC-A. Its last drawn digit says where they were, and so how the others are
/// weighted in UPC-A's check sum.
std::vector<Family> upceFamilies() {
  struct Kind {
    int minLast, maxLast;
    std::array<int, kMaxDigits> weights;
  };
  constexpr std::array<Kind, 4> kKinds = {{{0, 2, {1, 3, 3, 1, 3, 1}},
                                           {3, 3, {1, 3, 1, 1, 3, 0}},
                                           {4, 4, {1, 3, 1, 3, 3, 0}},
                                           {5, 9, {1, 3, 1, 3, 1, 3}}}};
  std::vector<Family> families;
  for (int system = 0; system < 2; ++system) {
    for (int check = 0; check < 10; ++check) {
      for (const Kind& kind : kKinds) {
        const std::uint64_t sets = bitsOf(kUPCESets[check]);
        families.push_back({system == 0 ? sets : sets ^ 0b111111, kind.weights,
                            (10 - (3 * system + check) % 10) % 10, kind.minLast, kind.maxLast,
                            std::to_string(system), std::to_string(check)});
      }
    }
  }
  return families;
}

const std::vector<Family>& familiesOf(const RetailSymbol& symbol) {
  static const std::vector<Family> kEAN13 = eanFamilies(12);
  static const std::vector<Family> kEAN8 = eanFamilies(8);
  static const std::vector<Family> kUPCE = upceFamilies();
  return symbol.digits.size() == 12 ? kEAN13 : symbol.digits.size() == 8 ? kEAN8 : kUPCE;
}

/// Returns the family's two best numbers of `count` drawn digits, by dynamic programming over the remainders
/// of the check sum: all numbers that share a remainder so far can be continued in the same ways.
TwoBest bestOf(const Family& family, const DigitScores& scores, std::size_t count) {
  std::array<TwoBest, 10> sums;
  sums[0].first = {0, 0};
  for (std::size_t i = 0; i < count; ++i) {
    std::array<TwoBest, 10> next;
    const float* score = scores[i].data() + (family.digitsInSetB >> i & 1 ? 10 : 0);
    const bool last = i + 1 == count;
    for (int digit = last ? family.minLast : 0; digit <= (last ? family.maxLast : 9); ++digit) {
      for (int sum = 0; sum < 10; ++sum) {
        for (const ScoredDigits& known : {sums[sum].first, sums[sum].second}) {
          if (known.score == -HUGE_VALF) {
            break;
          }
          next[(sum + family.weights[i] * digit) % 10].add(
              {known.score + score[digit], known.digits * 10 + static_cast<std::uint64_t>(digit)});
        }
      }
    }
    sums = next;
  }
  return sums[family.remainder];
}

/// Returns an upper bound of the scores in the family, which ignores the check digit.
float upperBound(const Family& family, const DigitScores& scores, std::size_t count) {
  float bound = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const auto set = scores[i].begin() + (family.digitsInSetB >> i & 1 ? 10 : 0);
    bound += *std::max_element(set, set + 10);
  }
  return bound;
}

RetailNumber numberOf(const Family& family, const DigitScores& scores, std::size_t count,
                      const ScoredDigits& best, float runnerUp) {
  std::string drawn = std::to_string(best.digits);
  drawn.insert(0, count - drawn.size(), '0');
  RetailNumber number{family.prefix + drawn + family.suffix, best.score, runnerUp, HUGE_VALF};
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t column = drawn[i] - '0' + (family.digitsInSetB >> i & 1 ? 10 : 0);
    number.worstDigit = std::min(number.worstDigit, scores[i][column]);
  }
  return number;
}

}  // namespace

const RetailSymbol& ean13Symbol() {
  static const RetailSymbol kSymbol = makeSymbol(AVMetadataObjectTypeEAN13Code, 6, "01010", 6, "101");
  return kSymbol;
}

const RetailSymbol& ean8Symbol() {
  static const RetailSymbol kSymbol = makeSymbol(AVMetadataObjectTypeEAN8Code, 4, "01010", 4, "101");
  return kSymbol;
}

const RetailSymbol& upceSymbol() {
  static const RetailSymbol kSymbol = makeSymbol(AVMetadataObjectTypeUPCECode, 6, "", 0, "010101");
  return kSymbol;
}

unsigned setAModules(int digit) { return kSetA[digit]; }

unsigned setBModules(int digit) {
  unsigned modules = 0;
  for (int i = 0; i < kModulesPerDigit; ++i) {
    modules |= (~kSetA[digit] >> i & 1) << (kModulesPerDigit - 1 - i);
  }
  return modules;
}

RetailNumber bestNumber(const RetailSymbol& symbol, const DigitScores& scores) {
  const std::size_t count = symbol.digits.size();
  TwoBest best;
  const Family* familyOfBest = nullptr;
  for (const Family& family : familiesOf(symbol)) {
    if (upperBound(family, scores, count) <= best.second.score) {
      continue;
    }
    const TwoBest own = bestOf(family, scores, count);
    if (own.first.score > best.first.score) {
      familyOfBest = &family;
    }
    best.add(own.first);
    best.add(own.second);
  }
  return numberOf(*familyOfBest, scores, count, best.first, best.second.score);
}

}  // namespace nivlo
