#include "linux/codes/matrix/AztecRune.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <numeric>

namespace nivlo {

namespace {

constexpr int kWords = 7;
constexpr int kDataWords = 2;
constexpr int kBitsPerWord = 4;
constexpr int kBitsPerEdge = 7;
constexpr int kMaxWrongWords = 1;
// Bits that are inverted in every word of a rune, which sets it apart from a mode message.
constexpr int kInvertedBits = 0b1010;

using Words = std::array<int, kWords>;

/// Multiplies in GF(16), modulo x^4 + x + 1.
int product(int a, int b) {
  int result = 0;
  for (; b != 0; b >>= 1, a = a & 8 ? (a << 1) ^ 0b10011 : a << 1) {
    if (b & 1) {
      result ^= a;
    }
  }
  return result;
}

/// Returns the words of the rune with this number: the number itself and its Reed-Solomon check words.
Words wordsOf(int number) {
  // The product of (x - 2^i) for i from 1 to 5.
  constexpr std::array<int, kWords - kDataWords> kGenerator{11, 4, 6, 2, 1};
  Words words{number >> kBitsPerWord, number & 0xf};
  Words rest = words;
  for (int i = 0; i < kDataWords; ++i) {
    for (std::size_t k = 0; k < kGenerator.size(); ++k) {
      rest[i + 1 + k] ^= product(kGenerator[k], rest[i]);
    }
  }
  std::copy(rest.begin() + kDataWords, rest.end(), words.begin() + kDataWords);
  for (int& word : words) {
    word ^= kInvertedBits;
  }
  return words;
}

/// The modules of a rune as if it had not been turned.
class TurnedBack {
 public:
  TurnedBack(const Modules& modules, int turns) : modules_(modules), turns_(turns) {}

  /// x and y count from the middle of the rune.
  bool isDark(int x, int y) const {
    for (int i = 0; i < turns_; ++i) {
      const int turned = -y;
      y = x;
      x = turned;
    }
    const int middle = modules_.across() / 2;
    return modules_.isDark(middle + x, middle + y);
  }

 private:
  const Modules& modules_;
  int turns_;
};

/// The orientation marks are three dark modules at the top left corner, two at the top right and one at the
/// bottom right.
bool hasOrientationMarks(const TurnedBack& rune) {
  constexpr int kFar = kRuneModules / 2;
  constexpr int kNear = kFar - 1;
  const auto dark = [&](int x, int y) { return rune.isDark(x, y); };
  return dark(-kFar, -kFar) && dark(-kNear, -kFar) && dark(-kFar, -kNear) && dark(kFar, -kFar) &&
         dark(kFar, -kNear) && !dark(kNear, -kFar) && dark(kFar, kNear) && !dark(kFar, kFar) &&
         !dark(kNear, kFar) && !dark(-kFar, kFar) && !dark(-kNear, kFar) && !dark(-kFar, kNear);
}

/// Returns the words that run clockwise around the bullseye from the top left.
Words wordsAround(const TurnedBack& rune) {
  constexpr int kFar = kRuneModules / 2;
  Words words{};
  for (int bit = 0; bit < kWords * kBitsPerWord; ++bit) {
    const int along = bit % kBitsPerEdge - kBitsPerEdge / 2;
    const std::array<bool, 4> onEdges{rune.isDark(along, -kFar), rune.isDark(kFar, along),
                                      rune.isDark(-along, kFar), rune.isDark(-kFar, -along)};
    words[bit / kBitsPerWord] = words[bit / kBitsPerWord] << 1 | (onEdges[bit / kBitsPerEdge] ? 1 : 0);
  }
  return words;
}

}  // namespace

std::optional<AztecRune> readAztecRune(const Modules& modules) {
  for (int turns = 0; turns < 4; ++turns) {
    const TurnedBack rune(modules, turns);
    if (!hasOrientationMarks(rune)) {
      continue;
    }
    const Words read = wordsAround(rune);
    for (int number = 0; number < 256; ++number) {
      const Words words = wordsOf(number);
      const int wrong = std::transform_reduce(words.begin(), words.end(), read.begin(), 0, std::plus<>(),
                                              std::not_equal_to<>());
      if (wrong <= kMaxWrongWords) {
        return AztecRune{number, turns};
      }
    }
  }
  return std::nullopt;
}

}  // namespace nivlo
