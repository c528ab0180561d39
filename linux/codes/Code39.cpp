#include "linux/codes/Code39.hpp"

namespace nivlo {

namespace {

/// A character's value is its place here.
constexpr std::string_view kAlphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";

}  // namespace

bool endsInMod43Check(std::string_view text) {
  if (text.size() < 2) return false;
  std::size_t sum = 0;
  for (const char character : text.substr(0, text.size() - 1)) {
    const std::size_t value = kAlphabet.find(character);
    if (value == std::string_view::npos) return false;
    sum += value;
  }
  return kAlphabet[sum % kAlphabet.size()] == text.back();
}

}  // namespace nivlo
