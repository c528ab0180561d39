// An open file.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace nivlo {

/// Writes go straight to the system, with no buffer between, and always to the file's end, even when another
/// process appends to the same file. One thread at a time.
class NSFileHandle {
 public:
  /// Opens a file that is there. Null where there is none, or none that can be written to: only regular files
  /// and character devices are opened, for a pipe would keep the caller waiting for a reader.
  static std::unique_ptr<NSFileHandle> fileHandleForWritingAtPath(const std::filesystem::path& path);

  /// Moves to the end and returns its offset: the file's length in bytes. Throws NSException when the system
  /// refuses, and once the file is closed.
  std::uint64_t seekToEndOfFile();

  /// Writes all of it. Throws NSException when that fails, for example on a full disk, and once the file is
  /// closed; what was written before the failure stays in the file.
  void writeData(std::string_view data);

  /// Further calls change nothing. The destructor closes too.
  void closeFile() { file_.reset(); }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  using File = std::unique_ptr<std::FILE, Close>;

  explicit NSFileHandle(File file) : file_(std::move(file)) {}

  File file_;
};

}  // namespace nivlo
