// A directory that lives as long as its object.
#pragma once

#include <filesystem>

namespace nivlo::test {

/// Created empty, with mode 700, under the system's temporary directory; removed with all it holds. Its path
/// is short, so that a socket inside stays below the length limit of socket addresses. Throws
/// std::system_error when it cannot be made.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace nivlo::test
