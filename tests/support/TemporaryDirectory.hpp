// A directory that lives as long as its object.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

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

  /// Writes a file anew, with the directories above it, and returns its path.
  std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const;

  /// What is in a file; empty where there is none.
  std::string read(const std::filesystem::path& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace nivlo::test
