#include "linux/camera/files/FilmStream.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

#include "linux/camera/files/FilmPipeline.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::seconds shortestPause = 1s;
constexpr std::chrono::seconds longestPause = 30s;

}  // namespace

std::string findFilmProblem(const std::filesystem::path& path) {
  FilmPipeline pipeline(path, {});
  const auto problem = pipeline.prepare();
  if (problem.empty()) {
    return {};
  }
  return "cannot play " + path.string() + ": " + problem +
         "; give a PNG, JPEG or WebP picture, or a film whose GStreamer plugins are installed";
}

FilmStream::FilmStream(std::filesystem::path path, CameraFrameHandler onFrame)
    : path_(std::move(path)),
      onFrame_(std::move(onFrame)),
      thread_([this](const std::stop_token& stop) { run(stop); }) {}

void FilmStream::run(const std::stop_token& stop) {
  auto pause = shortestPause;
  while (!stop.stop_requested()) {
    const auto begin = std::chrono::steady_clock::now();
    FilmPipeline pipeline(path_, onFrame_);
    const auto problem = pipeline.play(stop);
    if (stop.stop_requested()) {
      return;
    }
    report(problem);
    const bool playedWell = std::chrono::steady_clock::now() - begin > longestPause;
    if (playedWell) {
      pause = shortestPause;
    }
    std::unique_lock lock(mutex_);
    wake_.wait_for(lock, stop, pause, [] { return false; });
    pause = std::min(pause * 2, longestPause);
  }
}

void FilmStream::report(const std::string& problem) {
  if (problem == reported_) {
    return;
  }
  reported_ = problem;
  NSLog("film camera: %@ stopped: %@; it is tried again by itself, make sure the file is whole and readable",
        path_.string(), problem);
}

}  // namespace nivlo
