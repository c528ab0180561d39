// The log file that the functions of MFLog.hpp write to.
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

/// Appends lines to log.txt in a directory, and writes each to the system log too. Once the file has reached
/// 1 MiB, the next line first renames it to log.txt.bak, in place of an earlier one, and starts a new file.
/// Text is UTF-8 and lines end in CR LF. A new or emptied file begins with a header that names the
/// application and the machine. The header does not end in a line end, so what follows it is on its last
/// line.
///
/// Callers never see trouble with the file. A write that fails is reported to the system log and lost, except
/// for the part of it that fitted on a full disk; the next write tries again. While the file cannot be
/// opened, lines only go to the system log, and a write tries to open it at most once a second. When the file
/// was deleted, the next line creates a new one; when it was replaced, the next line goes to its replacement,
/// or the line after that if both have the same length. Several processes may use one directory. A new
/// directory and a new file are for their owner only.
///
/// Callable from any thread. Failures are reported to the log sink while the file is locked, so a sink must
/// not wait for a thread that logs here.
class MFLoggerImpl : public NSObject {
 public:
  /// Returns the time that lines are stamped with. Called from any thread.
  using Clock = std::function<std::time_t()>;

  /// Returns the logger in the directory "Logs" of userLibraryDirectory(). The first call makes it, and it
  /// lives until the process ends. When the user has no such directory, it writes to the system log only.
  static std::shared_ptr<MFLoggerImpl> sharedInstance();

  /// Makes a logger in another directory, which is created if need be. With an empty path it writes to the
  /// system log only.
  static std::shared_ptr<MFLoggerImpl> init(std::filesystem::path directory, Clock clock = &systemTime);

  /// Writes one line, for example "<E> Mar 05 14:03:22 [main] camera failed": the level's tag, the local
  /// time, the thread's label and the message. The label is "main" on the main thread. On others it is the
  /// first four characters of the thread's name (see NSThread), or "null" for a thread without a name. Levels
  /// are 0, emergency, to 7, debug; throws std::out_of_range for a higher one.
  void writeMessage(std::string_view message, unsigned long level);

  /// Updates the month in the time stamps. It is called when the program becomes active and when the time
  /// changes significantly; between these, stamps keep their month even if another one has begun.
  void checkDate(const NSNotification&);

  /// "Jan" to "Dec", or "???" when the clock's time cannot be converted to local time.
  std::string currentMonthName() const;
  /// The stamp of a line, for example "Mar 05 14:03:22".
  std::string currentTime() const;

  /// Empty when the logger has no directory, and so is logFilePath().
  const std::filesystem::path& logFileDirectory() const { return logFileDirectory_; }
  const std::filesystem::path& logFilePath() const { return logFilePath_; }

  /// Only stored: messages of every level are written. 7 until it is set.
  unsigned long logLevel() const { return logLevel_; }
  void setLogLevel(unsigned long level) { logLevel_ = level; }

  /// In bytes. Only stored: the file is rolled at 1 MiB whatever it is. 0 until it is set.
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

  std::recursive_mutex fileHandleLock_;  ///< guards the four fields below
  std::unique_ptr<NSFileHandle> fileHandle_;
  std::uint64_t fileSize_ = 0;
  bool needsRoll_ = false;
  std::chrono::steady_clock::time_point nextAttempt_;  ///< when the file may be opened again

  std::atomic<const char*> currentMonth_;
  std::atomic<unsigned long> logLevel_{7};
  std::atomic<std::uint64_t> maxFileSize_{0};
};

}  // namespace nivlo
