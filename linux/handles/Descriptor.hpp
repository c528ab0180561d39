// A file descriptor that is closed with its owner.
#pragma once

#include <utility>

#include <unistd.h>

namespace nivlo {

class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) {
      close(number_);
    }
  }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  /// -1 when there is none.
  int get() const { return number_; }

 private:
  int number_;
};

}  // namespace nivlo
