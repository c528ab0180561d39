#include "linux/codes/child/CharacterSets.hpp"

#include <string>

#include <fmt/format.h>

namespace nivlo {

namespace {

constexpr int kLastISO8859 = 16;

}  // namespace

/// A set that this system lacks is left out: ZBar then does without it, too.
LoadedCharacterSets::LoadedCharacterSets() {
  std::vector<std::string> names{"UTF-8", "SJIS", "BIG-5", "CP437"};
  for (int part = 1; part <= kLastISO8859; ++part) {
    names.push_back(fmt::format("ISO8859-{}", part));
  }
  for (const auto& name : names) {
    const iconv_t converter = iconv_open("UTF-8", name.c_str());
    if (converter != reinterpret_cast<iconv_t>(-1)) {
      converters_.push_back(converter);
    }
  }
}

LoadedCharacterSets::~LoadedCharacterSets() {
  for (const auto converter : converters_) {
    iconv_close(converter);
  }
}

}  // namespace nivlo
