#include "tests/support/TemporaryDirectory.hpp"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include <stdlib.h>

namespace nivlo::test {

TemporaryDirectory::TemporaryDirectory() {
  std::string name = std::filesystem::temp_directory_path() / "nivlo-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), name);
  }
  path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryDirectory::write(const std::filesystem::path& name,
                                                std::string_view content) const {
  std::filesystem::create_directories((path_ / name).parent_path());
  std::ofstream(path_ / name, std::ios::binary) << content;
  return path_ / name;
}

std::string TemporaryDirectory::read(const std::filesystem::path& name) const {
  std::ifstream file(path_ / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace nivlo::test
