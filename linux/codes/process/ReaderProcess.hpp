// The reader's process, seen from the program that uses it.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

#include "linux/codes/protocol/Messages.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// Lives from construction on, until it is destroyed, which takes no time, or the thread that made it ends.
/// After anything has been thrown it is of no more use. Used by one thread.
class ReaderProcess {
 public:
  /// Starts the program, which is to look at pictures in `picture`, a descriptor of shared memory. Throws
  /// std::system_error.
  ReaderProcess(const std::filesystem::path& program, int picture);
  ~ReaderProcess();
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  /// Has it look at the picture, which must not change meanwhile. Throws std::runtime_error, whose text goes
  /// on from "the reader", when it has ended, answers nonsense or has not answered in time.
  std::vector<DecodedCode> look(LookRequest request, std::chrono::milliseconds deadline);

 private:
  [[noreturn]] void failAsItEnded();
  int end();

  pid_t pid_ = -1;
  Descriptor socket_;
  std::uint64_t looks_ = 0;
  std::string reply_;
};

}  // namespace nivlo
