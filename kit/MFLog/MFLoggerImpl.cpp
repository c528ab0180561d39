#include "kit/MFLog/MFLoggerImpl.hpp"

#include <array>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

#include <fmt/chrono.h>

#include "platform/Foundation/NSBundle.hpp"
#include "platform/Foundation/NSException.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSPathUtilities.hpp"
#include "platform/Foundation/NSString+Format.hpp"
#include "platform/Foundation/NSThread.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "platform/UIKit/UIDevice.hpp"

namespace nivlo {

namespace {

constexpr std::uint64_t kRollThreshold = 1'048'576;  // bytes
constexpr std::chrono::seconds kAttemptInterval{1};
constexpr std::array<std::string_view, 8> kLevelNames{"<M>", "<A>", "<C>", "<E>", "<W>", "<N>", "<I>", "<D>"};
constexpr std::array<const char*, 12> kMonthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::optional<std::tm> localTime(std::time_t time) {
  try {
    return fmt::localtime(time);
  } catch (const fmt::format_error&) {
    return std::nullopt;
  }
}

/// Each thread keeps the last text, because lines come in bursts and the text changes once a second. The
/// result is valid until the thread's next call.
const std::string& dayAndTime(std::time_t time) {
  thread_local std::optional<std::time_t> formatted;
  thread_local std::string text;
  if (formatted != time) {
    const auto local = localTime(time);
    text = local ? fmt::format("{:%d %H:%M:%S}", *local) : "?? ??:??:??";
    formatted = time;
  }
  return text;
}

std::string_view firstCharacters(std::string_view text, int count) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool startsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
    if (startsCharacter && count-- == 0) {
      return text.substr(0, i);
    }
  }
  return text;
}

std::string_view threadLabel() {
  if (NSThread::isMainThread()) {
    return "main";
  }
  const auto& name = NSThread::currentThread().name();
  return name ? firstCharacters(*name, 4) : "null";
}

std::string textOrNull(std::string text) { return text.empty() ? "(null)" : std::move(text); }

std::string mainBundleText(std::string_view key) {
  return textOrNull(NSBundle::mainBundle()->infoString(key));
}

std::filesystem::path sharedDirectory() {
  const auto library = userLibraryDirectory();
  return library ? *library / "Logs" : std::filesystem::path();
}

}  // namespace

std::shared_ptr<MFLoggerImpl> MFLoggerImpl::sharedInstance() {
  // Never destroyed, so that the destructors of other statics can still log.
  static const auto& instance = *new std::shared_ptr<MFLoggerImpl>(init(sharedDirectory()));
  return instance;
}

std::shared_ptr<MFLoggerImpl> MFLoggerImpl::init(std::filesystem::path directory, Clock clock) {
  std::shared_ptr<MFLoggerImpl> logger(new MFLoggerImpl(std::move(directory), std::move(clock)));
  logger->observeTime(logger, UIApplicationSignificantTimeChangeNotification);
  logger->observeTime(logger, UIApplicationDidBecomeActiveNotification);
  return logger;
}

MFLoggerImpl::MFLoggerImpl(std::filesystem::path directory, Clock clock)
    : logFileDirectory_(std::move(directory)),
      logFilePath_(logFileDirectory_.empty() ? "" : logFileDirectory_ / "log.txt"),
      clock_(std::move(clock)),
      currentMonth_(monthName()) {
  std::error_code ignored;
  const bool isNew = !std::filesystem::exists(logFilePath_, ignored);
  findFile();
  if (isNew) {
    writeLogHeader();
  }
  safeWrite(stringWithFormat(
      "\r\n\r\n######################## Application(V%@) launched ########################\r\n",
      mainBundleText("CFBundleVersion")));
}

void MFLoggerImpl::observeTime(const std::shared_ptr<MFLoggerImpl>& shared, std::string_view notification) {
  NSNotificationCenter::defaultCenter().addObserver(
      shared,
      [observer = std::weak_ptr(shared)](const NSNotification& change) {
        if (const auto logger = observer.lock()) {
          logger->checkDate(change);
        }
      },
      notification);
}

void MFLoggerImpl::checkDate(const NSNotification&) { currentMonth_ = monthName(); }

std::string MFLoggerImpl::currentMonthName() const { return monthName(); }

const char* MFLoggerImpl::monthName() const {
  const auto now = localTime(clock_());
  return now ? kMonthNames.at(static_cast<std::size_t>(now->tm_mon)) : "???";
}

std::string MFLoggerImpl::currentTime() const {
  return fmt::format("{} {}", currentMonth_.load(), dayAndTime(clock_()));
}

void MFLoggerImpl::writeMessage(std::string_view message, unsigned long level) {
  const auto line =
      fmt::format("{} {} [{}] {}\r\n", kLevelNames.at(level), currentTime(), threadLabel(), message);
  writeToLog("%@", line);
  writeLogToFile(line);
}

void MFLoggerImpl::writeLogHeader() {
  const auto device = UIDevice::currentDevice();
  safeWrite(stringWithFormat("# Application: %@\r\n# Version: %@\r\n# Device: %@\r\n# System: %@",
                             mainBundleText("CFBundleName"), mainBundleText("CFBundleVersion"),
                             textOrNull(device->model()), textOrNull(device->systemVersion())));
}

void MFLoggerImpl::writeLogToFile(std::string_view line) {
  const std::lock_guard lock(fileHandleLock_);
  findFile();
  if (needsRoll_) {
    rollFile();
  }
  if (fileSize_ == 0) {
    writeLogHeader();
  }
  safeWrite(line);
}

void MFLoggerImpl::safeWrite(std::string_view text) {
  const std::lock_guard lock(fileHandleLock_);
  if (!fileHandle_) {
    return;
  }
  reportingFailure([&] {
    fileHandle_->writeData(text);
    fileSize_ += text.size();
    needsRoll_ = fileSize_ >= kRollThreshold;
  });
}

void MFLoggerImpl::reportingFailure(const std::function<void()>& operation) {
  try {
    operation();
  } catch (const NSException& exception) {
    NSLog("Writedata exception %@ %@", exception.name(), exception.reason());
  }
}

/// The log tells what somebody does with the camera, so others must not read it.
void MFLoggerImpl::createFileWhereAbsent() {
  using std::filesystem::perms;
  std::error_code ignored;
  std::filesystem::create_directories(logFileDirectory_.parent_path(), ignored);
  if (std::filesystem::create_directory(logFileDirectory_, ignored)) {
    std::filesystem::permissions(logFileDirectory_, perms::owner_all, ignored);
  }
  if (!std::filesystem::exists(logFilePath_, ignored)) {
    const std::ofstream created(logFilePath_, std::ios::binary | std::ios::app);
    std::filesystem::permissions(logFilePath_, perms::owner_read | perms::owner_write, ignored);
  }
}

void MFLoggerImpl::openFile() {
  fileHandle_ = NSFileHandle::fileHandleForWritingAtPath(logFilePath_);
  fileSize_ = 0;
  needsRoll_ = false;
  if (fileHandle_) {
    reportingFailure([this] { fileSize_ = fileHandle_->seekToEndOfFile(); });
  }
}

/// Returns whether the path leads to another file than the open one, or to none. Also learns of what other
/// programs have appended.
bool MFLoggerImpl::isFileLost() {
  std::error_code error;
  const auto size = std::filesystem::file_size(logFilePath_, error);
  if (!error && size == fileSize_) {
    return false;
  }
  reportingFailure([this] { fileSize_ = fileHandle_->seekToEndOfFile(); });
  if (error) {
    return std::filesystem::status(logFilePath_, error).type() == std::filesystem::file_type::not_found;
  }
  return size != fileSize_;
}

/// Checks the path before every line. Whatever happened to the file since the last one, above all that
/// another program rolled it, shows there as a missing file or one of another size.
void MFLoggerImpl::findFile() {
  if (fileHandle_ && !isFileLost()) {
    return;
  }
  const auto now = std::chrono::steady_clock::now();
  if (!fileHandle_ && now < nextAttempt_) {
    return;
  }
  nextAttempt_ = now + kAttemptInterval;
  createFileWhereAbsent();
  openFile();
}

void MFLoggerImpl::rollFile() {
  std::error_code ignored;
  fileHandle_ = nullptr;
  removeBackLogFile();
  std::filesystem::rename(logFilePath_, logFileDirectory_ / "log.txt.bak", ignored);
  // When it could not be renamed, it is emptied, so that the log does not grow without bound.
  std::filesystem::resize_file(logFilePath_, 0, ignored);
  createFileWhereAbsent();
  openFile();
}

void MFLoggerImpl::removeBackLogFile() {
  std::error_code ignored;
  std::filesystem::remove(logFileDirectory_ / "log.txt.bak", ignored);
}

}  // namespace nivlo
