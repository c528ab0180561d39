#include "linux/codes/matrix/AztecRune.hpp"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>

namespace nivlo {

namespace {

constexpr int kWords = 7;
constexpr int kDataWords = 2;
constexpr int kBits = 4;
constexpr int kBitsOfSide = 7;
constexpr int kWrongWords = 1;
// What sets runes apart from mode messages.
constexpr int kFlipped = 0b1010;

using Words = std::array<int, kWords>;

/// In GF(16), by x^4 + x + 1.
int product(int a, int b) {
  int result = 0;
  for (; b != 0; b >>= 1, a = a & 8 ? (a << 1) ^ 0b10011 : a << 1) {
    if (b & 1) {
      result ^= a;
    }
  }
  return result;
}

/// The number and its Reed-Solomon check words.
Words wordsOf(int number) {
  // The product of (x - 2^i) for i from 1 to 5.
  constexpr std::array<int, kWords - kDataWords> kGenerator{11, 4, 6, 2, 1};
  Words words{number >> kBits, number & 0xf};
  Words rest = words;
  for (int i = 0; i < kDataWords; ++i) {
    for (std::size_t k = 0; k < kGenerator.size(); ++k) {
      rest[i + 1 + k] ^= product(kGenerator[k], rest[i]);
    }
  }
  std::copy(rest.begin() + kDataWords, rest.end(), words.begin() + kDataWords);
  for (int& word : words) {
    word ^= kFlipped;
  }
  return words;
}

/// The rune's modules, turned back by quarters of a turn.
class Upright {
 public:
  Upright(const Modules& modules, int turns) : modules_(modules), turns_(turns) {}

  /// From the rune's middle.
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

/// Three dark modules mark the top left corner, two the top right one, one the bottom right one.
bool areMarksRight(const Upright& rune) {
  constexpr int kFar = kRuneModules / 2;
  constexpr int kNear = kFar - 1;
  const auto dark = [&](int x, int y) { return rune.isDark(x, y); };
  return dark(-kFar, -kFar) && dark(-kNear, -kFar) && dark(-kFar, -kNear) && dark(kFar, -kFar) &&
         dark(kFar, -kNear) && !dark(kNear, -kFar) && dark(kFar, kNear) && !dark(kFar, kFar) &&
         !dark(kNear, kFar) && !dark(-kFar, kFar) && !dark(-kNear, kFar) && !dark(-kFar, kNear);
}

/// Clockwise along the sides, from the top left.
Words wordsAround(const Upright& rune) {
  constexpr int kFar = kRuneModules / 2;
  Words words{};
  for (int bit = 0; bit < kWords * kBits; ++bit) {
    const int along = bit % kBitsOfSide - kBitsOfSide / 2;
    const std::array<bool, 4> sides{rune.isDark(along, -kFar), rune.isDark(kFar, along),
                                    rune.isDark(-along, kFar), rune.isDark(-kFar, -along)};
    words[bit / kBits] = words[bit / kBits] << 1 | (sides[bit / kBitsOfSide] ? 1 : 0);
  }
  return words;
}

}  // namespace

std::optional<AztecRune> readAztecRune(const Modules& modules) {
  for (int turns = 0; turns < 4; ++turns) {
    const Upright rune(modules, turns);
    if (!areMarksRight(rune)) {
      continue;
    }
    const Words read = wordsAround(rune);
    for (int number = 0; number < 256; ++number) {
      const Words words = wordsOf(number);
      const int wrong = std::transform_reduce(words.begin(), words.end(), read.begin(), 0, std::plus<>(),
                                              std::not_equal_to<>());
      if (wrong <= kWrongWords) {
        return AztecRune{number, turns};
      }
    }
  }
  return std::nullopt;
}

}  // namespace nivlo
