// A camera stream that plays a film in a loop.
#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Why the file cannot be played as a film and what to do about it, for people; empty when it can. Decodes up
/// to the first picture, which takes a few seconds at most.
std::string findFilmProblem(const std::filesystem::path& path);

/// Frames arrive on a thread of GStreamer's. When the film cannot be played any further, the cause is logged
/// once and the film is opened again after growing delays.
class FilmStream final : public CameraStream {
 public:
  FilmStream(std::filesystem::path path, CameraFrameHandler onFrame);

 private:
  void run(const std::stop_token& stop);
  void report(const std::string& problem);

  const std::filesystem::path path_;
  const CameraFrameHandler onFrame_;
  std::string reported_;  ///< the problem that was logged last
  std::mutex mutex_;
  std::condition_variable_any wake_;
  std::jthread thread_;  // must be last, because the thread uses the other fields
};

}  // namespace nivlo
