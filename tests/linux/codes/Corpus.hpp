// Photos of codes whose texts are known, which are kept outside of the project.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo::test {

/// One picture of the corpus.
struct Photo {
  std::filesystem::path path;  ///< absolute, where the corpus's path was
  std::string type;            ///< identifier of its symbology, "-" where there is no code that could be read
  std::string text;            ///< bytes; some of UPC-E are the 13 digits that they stand for
};

/// The lines of `manifest.tsv` in the directory; none where that is absent.
std::vector<Photo> photosIn(const std::filesystem::path& corpus);

/// Whether the code is what the photo shows.
bool isRight(const DecodedCode& code, const Photo& photo);

/// The 13 digits that 8 digits of UPC-E stand for.
std::string expandedUPCE(const std::string& digits);

}  // namespace nivlo::test
