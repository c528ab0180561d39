#include "host/scan/ScanFiles.hpp"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <future>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "host/scan/PictureScan.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/camera/ImageFile.hpp"
#include "linux/codes/process/ProcessCodeReader.hpp"
#include "platform/Foundation/NSThread.hpp"

namespace nivlo {

namespace {

// A look at a large photo takes longer than one at a camera's frame, and here nobody is waiting for the next.
constexpr std::chrono::milliseconds kDeadline = 10 * kLiveDeadline;

struct Scan {
  std::vector<DecodedCode> codes;
  std::chrono::duration<double, std::milli> duration{};
  std::string error;  ///< names the file; empty if that could be read
};

Scan scanFile(CodeReaderDriver& driver, const std::filesystem::path& file) {
  const auto start = std::chrono::steady_clock::now();
  Scan scan;
  const ImageLoad image = loadImageFile(file);
  const auto reader = image.frame ? driver.makeReader() : nullptr;
  if (reader) {
    scan.codes = scanPicture(*reader, *image.frame);
  } else {
    scan.error = image.frame ? file.string() + ": the code reader cannot be started" : image.error;
  }
  scan.duration = std::chrono::steady_clock::now() - start;
  return scan;
}

/// Scans the files on all cores, starting at once.
class ParallelScan {
 public:
  explicit ParallelScan(const std::vector<std::filesystem::path>& files)
      : files_(files), scans_(files.size()) {
    const auto cores = std::max<std::size_t>(1, std::thread::hardware_concurrency());
    for (std::size_t i = 0; i < std::min(cores, files.size()); ++i) {
      workers_.emplace_back([this](const std::stop_token& stop) { work(stop); });
    }
  }

  /// Waits until a file is scanned. Can be called once for each file.
  Scan take(std::size_t file) { return scans_[file].get_future().get(); }

 private:
  void work(const std::stop_token& stop) {
    NSThread::currentThread().setName("scan");
    const auto driver = makeProcessCodeReaderDriver(kDeadline);
    for (std::size_t i = next_++; i < files_.size() && !stop.stop_requested(); i = next_++) {
      scans_[i].set_value(scanFile(*driver, files_[i]));
    }
  }

  const std::vector<std::filesystem::path>& files_;
  std::vector<std::promise<Scan>> scans_;
  std::atomic<std::size_t> next_{0};
  std::vector<std::jthread> workers_;
};

void writeText(std::ostream& out, std::ostream& err, const std::string& prefix, const Scan& scan) {
  for (const DecodedCode& code : scan.codes) {
    out << prefix << code.type << ": " << visibleText(code.text) << '\n';
  }
  if (scan.codes.empty() && scan.error.empty()) {
    err << prefix << "no code found\n";
  }
}

void writeJSON(std::ostream& out, const std::filesystem::path& file, const Scan& scan) {
  nlohmann::ordered_json object;
  object["file"] = file.string();
  object["codes"] = nlohmann::ordered_json::array();
  for (const DecodedCode& code : scan.codes) {
    nlohmann::ordered_json corners = nlohmann::ordered_json::array();
    for (const CGPoint& corner : code.corners) {
      corners.push_back({corner.x, corner.y});
    }
    object["codes"].push_back({{"type", code.type}, {"text", code.text}, {"corners", corners}});
  }
  object["milliseconds"] = std::round(scan.duration.count() * 10) / 10;
  if (!scan.error.empty()) {
    object["error"] = scan.error;
  }
  // A file name may be any bytes; those that are not UTF-8 become U+FFFD.
  out << object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

/// A counter on the terminal's current line. It must be wiped before anything else is written there.
class Progress {
 public:
  Progress(std::ostream& err, std::size_t total)
      : err_(err), total_(total), shown_(total > 1 && &err == &std::cerr && isatty(STDERR_FILENO)) {}

  void show(std::size_t done) {
    if (shown_) {
      err_ << "\r" << done << " of " << total_ << " pictures" << std::flush;
    }
  }
  void wipe() {
    if (shown_) {
      err_ << "\r\x1b[K" << std::flush;
    }
  }

 private:
  std::ostream& err_;
  std::size_t total_;
  bool shown_;
};

}  // namespace

int scanFiles(const ScanOptions& options, std::ostream& out, std::ostream& err) {
  if (!makeProcessCodeReaderDriver()->makeReader()) {
    return 1;
  }
  ParallelScan scans(options.files);
  Progress progress(err, options.files.size());
  int status = 0;
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    const std::filesystem::path& file = options.files[i];
    progress.show(i);
    const Scan scan = scans.take(i);
    progress.wipe();
    if (options.json) {
      writeJSON(out, file, scan);
    } else {
      writeText(out, err, options.files.size() > 1 ? visibleText(file.string()) + ": " : "", scan);
    }
    out << std::flush;
    if (scan.error.empty()) {
      continue;
    }
    err << "nivlo: " << visibleText(scan.error) << '\n';
    status = 1;
  }
  return status;
}

}  // namespace nivlo
