#include "linux/camera/files/FilmStream.hpp"

#include <chrono>
#include <utility>

#include "linux/camera/files/FilmPipeline.hpp"
#include "linux/timing/Backoff.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSThread.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::seconds kFirstDelay = 1s;
constexpr std::chrono::seconds kLongestDelay = 30s;

}  // namespace

std::string findFilmProblem(const std::filesystem::path& path) {
  FilmPipeline pipeline(path, {});
  const auto problem = pipeline.prepare();
  if (problem.empty()) {
    return {};
  }
  return "cannot play " + path.string() + ": " + problem +
         "; use a PNG, JPEG or WebP picture, or a film whose GStreamer plugins are installed";
}

FilmStream::FilmStream(std::filesystem::path path, CameraFrameHandler onFrame)
    : path_(std::move(path)),
      onFrame_(std::move(onFrame)),
      thread_([this](const std::stop_token& stop) { run(stop); }) {}

void FilmStream::run(const std::stop_token& stop) {
  NSThread::currentThread().setName("camera");
  Backoff delay(kFirstDelay, kLongestDelay);
  while (!stop.stop_requested()) {
    const auto begin = std::chrono::steady_clock::now();
    FilmPipeline pipeline(path_, onFrame_);
    const auto problem = pipeline.play(stop);
    if (stop.stop_requested()) {
      return;
    }
    report(problem);
    if (std::chrono::steady_clock::now() - begin > kLongestDelay) {
      delay.reset();
    }
    std::unique_lock lock(mutex_);
    wake_.wait_for(lock, stop, delay.next(), [] { return false; });
  }
}

void FilmStream::report(const std::string& problem) {
  if (problem == reported_) {
    return;
  }
  reported_ = problem;
  NSLog(
      "film camera: playing %@ failed: %@; check that the file is complete and readable. It is opened again "
      "until it plays",
      path_.string(), problem);
}

}  // namespace nivlo
