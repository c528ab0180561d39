// The structure of EAN-13, EAN-8 and UPC-E (ISO/IEC 15420), and which digits may occur together.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace nivlo {

constexpr int kModulesPerDigit = 7;
/// The most digits that any of the symbols draws.
constexpr std::size_t kMaxDigits = 12;

/// The modules and digits of one kind of symbol, left to right.
struct RetailSymbol {
  const char* type;         ///< metadata-object type identifier
  std::string modules;      ///< without quiet zones: '1' dark, '0' light, '?' depends on the digits
  std::vector<int> digits;  ///< the module at which each drawn digit begins
  std::size_t leading;  ///< number of digits that begin light, in set A or B; the rest begin dark, in set C
  bool isSymmetrical;   ///< true if the fixed modules read the same from right to left
};

const RetailSymbol& ean13Symbol();
const RetailSymbol& ean8Symbol();
const RetailSymbol& upceSymbol();

/// Returns the seven modules of a digit 0 to 9 in set A: the first in the highest of seven bits, 1 for dark.
/// Set C is the negative of set A.
unsigned setAModules(int digit);
/// The same for set B, which is set C backwards.
unsigned setBModules(int digit);

/// Scores of how well each digit fits at each place, up to 1: ten scores for set A (set C for trailing
/// digits), then ten for set B, which only leading digits use.
using DigitScores = std::array<std::array<float, 20>, kMaxDigits>;

/// A number and how well it fits a picture.
struct RetailNumber {
  std::string text;      ///< with the digits not drawn: EAN-13's first, UPC-E's first and last
  float score = 0;       ///< the sum of its digits' scores
  float runnerUp = 0;    ///< the score of the next best number; minus infinity if there is none
  float worstDigit = 0;  ///< the lowest score of its digits
};

/// Returns the number with the highest score among those with a correct check digit and a valid sequence of
/// sets. There always is one. Scores may also be sums over several rows.
RetailNumber bestNumber(const RetailSymbol& symbol, const DigitScores& scores);

}  // namespace nivlo
