// What a framework operation raises when the machine lets it down.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace nivlo {

inline constexpr auto NSFileHandleOperationException = "NSFileHandleOperationException";

class NSException : public std::exception {
 public:
  NSException(std::string name, std::string reason) : name_(std::move(name)), reason_(std::move(reason)) {}

  /// The kind of failure, one of the constants above.
  const std::string& name() const { return name_; }
  /// The cause, for people.
  const std::string& reason() const { return reason_; }
  const char* what() const noexcept override { return reason_.c_str(); }

 private:
  std::string name_;
  std::string reason_;
};

}  // namespace nivlo
