// Photos of codes with known texts, which are kept outside of the project.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo::test {

/// One picture of the corpus.
struct Photo {
  std::filesystem::path path;  ///< begins with the path of the corpus
  std::string type;  ///< identifier of the code's symbology, or "-" if the photo shows no readable code
  std::string text;  ///< bytes; for some UPC-E codes, the 13 digits that they stand for
};

/// Returns the photos that `manifest.tsv` in the directory lists, or none if there is no such file.
std::vector<Photo> photosIn(const std::filesystem::path& corpus);

/// Returns whether the code is the one that the photo shows.
bool isRight(const DecodedCode& code, const Photo& photo);

/// Returns the 13 digits that the 8 digits of a UPC-E code stand for.
std::string expandedUPCE(const std::string& digits);

}  // namespace nivlo::test
