// The exceptions that some framework operations throw; their comments say so.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace nivlo {

/// The name of an exception about a file that cannot be read or written.
inline constexpr auto NSFileHandleOperationException = "NSFileHandleOperationException";

/// Thrown when the system refuses an operation, for example a write to a full disk. Immutable.
class NSException : public std::exception {
 public:
  NSException(std::string name, std::string reason) : name_(std::move(name)), reason_(std::move(reason)) {}

  /// The kind of failure, one of the constants above.
  const std::string& name() const { return name_; }
  /// The cause, as a text for people.
  const std::string& reason() const { return reason_; }
  const char* what() const noexcept override { return reason_.c_str(); }

 private:
  std::string name_;
  std::string reason_;
};

}  // namespace nivlo
