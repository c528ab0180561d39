// The character sets that codes are written in.
#pragma once

#include <vector>

#include <iconv.h>

namespace nivlo {

/// Keeps the C library's converters loaded that ZBar asks for by every QR code: once the reader is locked in,
/// no file can be opened to load one.
class LoadedCharacterSets {
 public:
  LoadedCharacterSets();
  ~LoadedCharacterSets();
  LoadedCharacterSets(const LoadedCharacterSets&) = delete;
  LoadedCharacterSets& operator=(const LoadedCharacterSets&) = delete;

 private:
  std::vector<iconv_t> converters_;
};

}  // namespace nivlo
