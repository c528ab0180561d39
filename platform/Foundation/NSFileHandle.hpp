// Appending to files.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace nivlo {

/// A file that is open for writing. Whatever is written goes to the system at once, without a buffer, and
/// always to the end of the file, even while other processes append to it too. Programs that this one starts
/// do not inherit the file. To be used by one thread at a time.
class NSFileHandle {
 public:
  /// Opens an existing file. Null when there is none, when it cannot be written to, and when it is neither a
  /// regular file nor a character device: opening a pipe would wait for a reader.
  static std::unique_ptr<NSFileHandle> fileHandleForWritingAtPath(const std::filesystem::path& path);

  /// Moves to the end of the file and returns its length in bytes. Throws NSException when the system
  /// refuses, and when the file is closed.
  std::uint64_t seekToEndOfFile();

  /// Appends all of the data. Throws NSException when that fails, for example on a full disk, and when the
  /// file is closed. The part that was written before the failure stays in the file.
  void writeData(std::string_view data);

  /// Closes the file, as the destructor does. Does nothing for a file that is closed already.
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
