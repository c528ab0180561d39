#include "platform/Foundation/NSFileHandle.hpp"

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "platform/Foundation/NSException.hpp"

namespace nivlo {

namespace {

[[noreturn]] void raise(const std::string& operation, int error) {
  throw NSException(NSFileHandleOperationException,
                    operation + ": " + std::generic_category().message(error));
}

}  // namespace

std::unique_ptr<NSFileHandle> NSFileHandle::fileHandleForWritingAtPath(const std::filesystem::path& path) {
  std::error_code ignored;
  const auto status = std::filesystem::status(path, ignored);
  if (!is_regular_file(status) && !is_character_file(status)) {
    return nullptr;
  }
  // "e" closes the file in programs that are started, so that they do not inherit it.
  File file(std::fopen(path.c_str(), "abe"));
  if (!file || std::setvbuf(file.get(), nullptr, _IONBF, 0) != 0) {
    return nullptr;
  }
  return std::unique_ptr<NSFileHandle>(new NSFileHandle(std::move(file)));
}

std::uint64_t NSFileHandle::seekToEndOfFile() {
  if (!file_) {
    raise("seek", EBADF);
  }
  const auto end = std::fseek(file_.get(), 0, SEEK_END) == 0 ? std::ftell(file_.get()) : -1;
  if (end < 0) {
    raise("seek", errno);
  }
  return static_cast<std::uint64_t>(end);
}

void NSFileHandle::writeData(std::string_view data) {
  if (!file_) {
    raise("write", EBADF);
  }
  if (std::fwrite(data.data(), 1, data.size(), file_.get()) != data.size()) {
    const int error = errno;
    std::clearerr(file_.get());
    raise("write", error);
  }
}

}  // namespace nivlo
