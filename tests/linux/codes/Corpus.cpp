#include "tests/linux/codes/Corpus.hpp"

#include <cstddef>
#include <fstream>
#include <sstream>

namespace nivlo::test {

namespace {

std::string fromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

/// Binary contents are listed as bytes, which a reader reports as if they were ISO 8859-1.
std::string latin1ToUTF8(const std::string& bytes) {
  std::string text;
  for (const unsigned char byte : bytes) {
    if (byte >= 0x80) {
      text += static_cast<char>(0xc0 | byte >> 6);
    }
    text += static_cast<char>(byte >= 0x80 ? 0x80 | (byte & 0x3f) : byte);
  }
  return text;
}

}  // namespace

std::vector<Photo> photosIn(const std::filesystem::path& corpus) {
  std::vector<Photo> photos;
  std::ifstream manifest(corpus / "manifest.tsv");
  for (std::string line; std::getline(manifest, line);) {
    if (line.starts_with("#")) {
      continue;
    }
    std::istringstream fields(line);
    std::string path, type, hex;
    std::getline(std::getline(std::getline(fields, path, '\t'), type, '\t'), hex, '\t');
    photos.push_back({corpus / path, type, type == "-" ? "" : fromHex(hex)});
  }
  return photos;
}

bool isRight(const DecodedCode& code, const Photo& photo) {
  const bool sameType =
      code.type == photo.type || (code.type == "org.iso.Code39Mod43" && photo.type == "org.iso.Code39");
  if (!sameType) {
    return false;
  }
  if (code.type == "org.gs1.UPC-E" && code.text.size() == 8 && photo.text.size() == 13) {
    return expandedUPCE(code.text) == photo.text;
  }
  return code.text == photo.text || code.text == latin1ToUTF8(photo.text);
}

std::string expandedUPCE(const std::string& upce) {
  const std::string digits = upce.substr(1, 6);
  const char last = digits[5];
  std::string middle = digits.substr(0, 5) + "0000" + last;
  if (last <= '2') {
    middle = digits.substr(0, 2) + last + "0000" + digits.substr(2, 3);
  }
  if (last == '3') {
    middle = digits.substr(0, 3) + "00000" + digits.substr(3, 2);
  }
  if (last == '4') {
    middle = digits.substr(0, 4) + "00000" + digits[4];
  }
  std::string expanded = "0";
  expanded += upce[0];
  expanded += middle;
  expanded += upce[7];
  return expanded;
}

}  // namespace nivlo::test
