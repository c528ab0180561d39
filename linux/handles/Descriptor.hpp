// A file descriptor that is closed with its owner.
#pragma once

#include <utility>

#include <unistd.h>

namespace nivlo {

/// Owns a file descriptor and closes it when destroyed or assigned to. It can be moved but not copied; one
/// that was moved from is empty. Assigning `Descriptor()` closes early. Errors of close() are ignored. It may
/// be used and destroyed on any thread, by one thread at a time.
class Descriptor {
 public:
  /// Takes over `number`, which nobody else may close. Any negative number, such as the -1 of a failed
  /// open(), makes an empty one; the caller still has errno.
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) {
      close(number_);
    }
  }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    Descriptor taken(std::move(other));
    std::swap(number_, taken.number_);
    return *this;
  }

  /// The descriptor, for use while this object lives; negative when it is empty.
  int get() const { return number_; }

 private:
  int number_;
};

}  // namespace nivlo
