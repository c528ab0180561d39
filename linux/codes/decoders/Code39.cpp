#include "linux/codes/decoders/Code39.hpp"

namespace nivlo {

namespace {

/// A character's position is its value in the check sum.
constexpr std::string_view kAlphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";

constexpr std::string_view kShifts = "$%/+";

/// Returns the character that a shift sign and a letter A to Z stand for, or nothing if the pair is unused.
std::optional<char> shifted(char shift, char letter) {
  const int place = letter - 'A';
  switch (shift) {
    case '$':
      return static_cast<char>(1 + place);
    case '+':
      return static_cast<char>('a' + place);
    case '/':
      // /A to /O are the signs that start at !, and /Z is the colon, which follows the digits in ASCII.
      if (letter > 'O' && letter != 'Z') {
        return std::nullopt;
      }
      return letter == 'Z' ? ':' : static_cast<char>('!' + place);
    default:
      break;
  }
  constexpr std::string_view kPercent("\x1b\x1c\x1d\x1e\x1f;<=>?[\\]^_{|}~\x7f\0@`\x7f\x7f\x7f", 26);
  return kPercent[place];
}

}  // namespace

bool endsInMod43Check(std::string_view text) {
  if (text.size() < 2) {
    return false;
  }
  std::size_t sum = 0;
  for (const char character : text.substr(0, text.size() - 1)) {
    const std::size_t value = kAlphabet.find(character);
    if (value == std::string_view::npos) {
      return false;
    }
    sum += value;
  }
  return kAlphabet[sum % kAlphabet.size()] == text.back();
}

std::optional<std::string> fullASCII(std::string_view text) {
  if (text.starts_with('+') || text.find_first_of(kShifts) == std::string_view::npos) {
    return std::nullopt;
  }
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kShifts.find(text[i]) == std::string_view::npos) {
      plain += text[i];
      continue;
    }
    const char letter = i + 1 < text.size() ? text[i + 1] : '\0';
    if (letter < 'A' || letter > 'Z') {
      return std::nullopt;
    }
    const auto character = shifted(text[i++], letter);
    if (!character) {
      return std::nullopt;
    }
    plain += *character;
  }
  return plain;
}

}  // namespace nivlo
