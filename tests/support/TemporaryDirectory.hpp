// A directory that is removed with its owner.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace nivlo::test {

/// A new, empty directory with mode 700 in the system's temporary directory, removed with all its content
/// when destroyed. Its path is short enough for the address of a socket in it (108 bytes).
class TemporaryDirectory {
 public:
  /// Throws std::system_error if the directory cannot be created.
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// Creates or replaces a file, and the directories above it if need be. Returns its full path.
  std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const;

  /// Returns the content of a file, or an empty string if there is none.
  std::string read(const std::filesystem::path& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace nivlo::test
