#include "tests/support/TemporaryDirectory.hpp"

#include <cerrno>
#include <string>
#include <system_error>

#include <stdlib.h>

namespace nivlo::test {

TemporaryDirectory::TemporaryDirectory() {
  std::string name = std::filesystem::temp_directory_path() / "nivlo-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
  path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace nivlo::test
