// How EAN-13, EAN-8 and UPC-E are built, and which digits may stand together.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace nivlo {

constexpr int kModulesOfDigit = 7;
constexpr std::size_t kMostDigits = 12;

struct RetailSymbol {
  const char* type;         ///< metadata-object type identifier
  std::string modules;      ///< without quiet zones: '1' dark, '0' light, '?' depends on the digits
  std::vector<int> digits;  ///< the module at which each begins
  std::size_t leading;      ///< that many begin light, in set A or B; the others begin dark, in set C
  bool isSymmetrical;       ///< except for its digits
};

const RetailSymbol& ean13Symbol();
const RetailSymbol& ean8Symbol();
const RetailSymbol& upceSymbol();

/// The seven modules of the digit in set A, the first in the highest bit, 1 for a dark one. Set C is its
/// negative, set B is set C backwards.
unsigned setAModules(int digit);
unsigned setBModules(int digit);

/// For each place how well each digit fits there: ten in set A (or C), then ten in set B.
using DigitScores = std::array<std::array<float, 20>, kMostDigits>;

struct RetailNumber {
  std::string text;    ///< with the digits that are not drawn: the first of EAN-13, first and last of UPC-E
  float score = 0;     ///< sum over its digits
  float runnerUp = 0;  ///< of the next best number, minus infinity where there is none
  float worstDigit = 0;
};

/// The number with the highest score whose sets and check digit are right.
RetailNumber bestNumber(const RetailSymbol& symbol, const DigitScores& scores);

}  // namespace nivlo
