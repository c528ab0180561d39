// The program's end of the conversation with nivlo-reader.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

#include "linux/codes/protocol/Messages.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// A running nivlo-reader. It is killed when this object is destroyed, which does not wait for a look to end,
/// and when the thread that constructed it ends. Once a look has thrown, the object can only be destroyed.
/// For use by one thread.
class ReaderProcess {
 public:
  /// Starts the program and hands it `picture`, the descriptor of a SharedPicture. Throws std::runtime_error,
  /// worded as look() words it.
  ReaderProcess(const std::filesystem::path& program, int picture);
  ~ReaderProcess();
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  /// Returns the codes in the shared picture, which must not change meanwhile; `request.number` is filled in
  /// here. Blocks until the reply arrives. Throws std::runtime_error if the process has ended, sends an
  /// invalid reply or has not replied within `deadline`; its text names the cause and the remedy for the log,
  /// without a full stop at the end.
  std::vector<DecodedCode> look(LookRequest request, std::chrono::milliseconds deadline);

 private:
  int killAndReap();

  pid_t pid_ = -1;
  Descriptor socket_;
  std::uint64_t looks_ = 0;
  std::string reply_;
};

}  // namespace nivlo
