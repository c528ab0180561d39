// The writer behind the logging functions.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/Foundation/NSFileHandle.hpp"
#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/Foundation/NSObject.hpp"

namespace nivlo {

/// Appends lines to log.txt in one directory, echoes each to the system log, and keeps one older generation,
/// log.txt.bak: the write after the one that brought the file to 1 MiB or beyond first rolls it. Text is
/// UTF-8, lines end in CR LF. An empty file gets a header that says which program on which machine writes; it
/// ends without a line end, and what is written next follows on its last line.
///
/// Trouble with the file never reaches the caller. A write that fails is lost, is reported to the system log,
/// and the next one is tried anew; of a line cut short by a full disk, the part that was written stays. A
/// file that cannot be opened is tried again by later writes, at most once a second; until then lines are
/// only echoed. Where the file was deleted, moved away or replaced by another, the next line starts a new one
/// or goes to the other (when the other has the very same length, the line after that). Several processes may
/// share a directory.
///
/// Callable from any thread. The system log's sink is called with the file locked when it is told of a
/// failure, so it must not wait for a thread that logs here.
class MFLoggerImpl : public NSObject {
 public:
  using Clock = std::function<std::time_t()>;

  /// The logger in "Logs" in the user's library directory, created by the first call and kept until the
  /// process ends. Where the user has no such directory it only echoes.
  static std::shared_ptr<MFLoggerImpl> sharedInstance();

  /// A logger in another directory, which is created if need be. An empty path is no directory. The clock is
  /// called from any thread.
  static std::shared_ptr<MFLoggerImpl> init(std::filesystem::path directory, Clock clock = &systemTime);

  /// Writes one line: the level's tag, the local time, the thread's label and the message, which may be any
  /// text. The label is "main" on the main thread, else the first four characters of the thread's name, or
  /// "null" where it has none. Levels run from 0, emergency, to 7, debug; throws std::out_of_range beyond.
  void writeMessage(std::string_view message, unsigned long level);

  /// Looks up the month that the lines' times show: they keep it until the program becomes active or the
  /// system reports a significant change of time, even when another month has begun.
  void checkDate(const NSNotification&);

  /// "Jan" to "Dec", or "???" where the clock's time has no local one.
  std::string currentMonthName() const;
  /// For example "Mar 05 14:03:22".
  std::string currentTime() const;

  const std::filesystem::path& logFileDirectory() const { return logFileDirectory_; }
  const std::filesystem::path& logFilePath() const { return logFilePath_; }

  /// Kept for whoever asks; no message is held back for its level.
  unsigned long logLevel() const { return logLevel_; }
  void setLogLevel(unsigned long level) { logLevel_ = level; }

  /// Bytes; kept for whoever asks, and not what the file is rolled at.
  std::uint64_t maxFileSize() const { return maxFileSize_; }
  void setMaxFileSize(std::uint64_t size) { maxFileSize_ = size; }

 private:
  MFLoggerImpl(std::filesystem::path directory, Clock clock);

  static std::time_t systemTime() { return std::time(nullptr); }
  const char* monthName() const;

  void observeTime(const std::shared_ptr<MFLoggerImpl>& shared, std::string_view notification);
  void createFileWhereAbsent();
  void openFile();
  bool isFileLost();
  void findFile();
  void rollFile();
  void removeBackLogFile();

  void writeLogHeader();
  void writeLogToFile(std::string_view line);
  void safeWrite(std::string_view text);
  void reportingFailure(const std::function<void()>& operation);

  const std::filesystem::path logFileDirectory_, logFilePath_;
  const Clock clock_;

  std::recursive_mutex fileHandleLock_;  ///< guards the next four
  std::unique_ptr<NSFileHandle> fileHandle_;
  std::uint64_t fileSize_ = 0;
  bool needsRoll_ = false;
  std::chrono::steady_clock::time_point nextAttempt_;  ///< to open the file

  std::atomic<const char*> currentMonth_;
  std::atomic<unsigned long> logLevel_{7};
  std::atomic<std::uint64_t> maxFileSize_{0};
};

}  // namespace nivlo
