// Looking at what a camera delivers.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"
#include "platform/drivers/LogSink.hpp"
#include "tests/support/WaitFor.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// The colour of a pixel as a viewer would see it, by the frame's own format and colorimetry.
Picture::Color colorAt(const VideoFrame& frame, int x, int y);

/// Whether two colours look the same, give or take what subsampling and compression do.
bool isAlike(const Picture::Color& first, const Picture::Color& second);

/// Whether the frame shows the four coloured quarters.
bool showsQuarters(const VideoFrame& frame);

/// Whether its middle has this colour.
bool shows(const VideoFrame& frame, const Picture::Color& color);

/// Takes a camera's frames.
class FrameTaker {
 public:
  CameraFrameHandler handler();

  /// The first frame that arrives from now on; null when none does in time.
  VideoFramePtr next(std::chrono::milliseconds timeout = kPatience);

  /// How many did not show this colour, of all so far.
  int countOtherThan(const Picture::Color& color) const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable arrived_;
  VideoFramePtr newest_;
  std::size_t count_ = 0;
  std::vector<Picture::Color> colors_;
};

/// Keeps the lines of the system log.
class LogKeeper : public LogSink {
 public:
  void write(std::string_view format, std::string_view message) override;
  int count(std::string_view part) const;
  bool isEmpty() const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace nivlo::test
