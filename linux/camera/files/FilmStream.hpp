// A film that plays for ever.
#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Why the file cannot be played as a film, with what to do about it; empty when it can. Opens the film up to
/// its first picture and waits at most a few seconds for it.
std::string findFilmProblem(const std::filesystem::path& path);

/// Plays a film in a loop. Frames come on GStreamer's thread.
class FilmStream final : public CameraStream {
 public:
  FilmStream(std::filesystem::path path, CameraFrameHandler onFrame);

 private:
  void run(const std::stop_token& stop);
  void report(const std::string& problem);

  const std::filesystem::path path_;
  const CameraFrameHandler onFrame_;
  std::string reported_;
  std::mutex mutex_;
  std::condition_variable_any wake_;
  std::jthread thread_;  // last: it uses all of the above
};

}  // namespace nivlo
