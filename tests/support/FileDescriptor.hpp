// A file descriptor that is closed with its owner.
#pragma once

#include <utility>

#include <unistd.h>

namespace nivlo::test {

class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  ~FileDescriptor() { reset(); }
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  /// -1 when there is none.
  int get() const { return number_; }

  void reset() {
    if (number_ >= 0) {
      close(number_);
    }
    number_ = -1;
  }

 private:
  int number_;
};

}  // namespace nivlo::test
