#include "host/surfaces/windows/WindowPlaces.hpp"

#include <algorithm>
#include <utility>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kShortestInterval{250};
constexpr std::chrono::seconds kLongestInterval{2};
constexpr std::chrono::seconds kPatience{5};

}  // namespace

WindowPlaces::WindowPlaces(OpenWindowSource open, std::function<void()> changed)
    : open_(std::move(open)), changed_(std::move(changed)) {
  if (open_) {
    connect();
  }
}

Cover WindowPlaces::coverOf(const std::string& output) const {
  return windows_ ? windows_->coverOf(output) : Cover::Unknown;
}

void WindowPlaces::connect() {
  std::string error;
  source_ = open_({.changed = [this] { askSoon(); },
                   .answered = [this](DesktopWindows windows) { answered(std::move(windows)); },
                   .ended = [this](const std::string& cause) { ended(cause); }},
                  &error);
  if (source_) {
    ask();
  } else {
    ended(error);
  }
}

void WindowPlaces::askSoon() {
  if (isWaiting_) {
    isStale_ = true;
  } else if (!std::exchange(isSoon_, true)) {
    const auto wait = std::max<Clock::duration>(asked_ + kShortestInterval - Clock::now(), Clock::duration());
    next_ = EventSource::onTimeout(std::chrono::ceil<std::chrono::milliseconds>(wait), [this] { ask(); });
  }
}

void WindowPlaces::ask() {
  asked_ = Clock::now();
  isSoon_ = false;
  isWaiting_ = true;
  isStale_ = false;
  next_ = EventSource::onTimeout(kPatience, [this] {
    source_.reset();
    ended("no answer has come");
  });
  source_->ask();
}

void WindowPlaces::answered(DesktopWindows windows) {
  isWaiting_ = false;
  next_ = EventSource();
  retryDelay_.reset();
  windows_ = std::move(windows);
  if (isStale_) {
    askSoon();
  } else if (!windows_->windows.empty()) {
    next_ = EventSource::onTimeout(kLongestInterval, [this] { ask(); });
  }
  changed_();
}

/// The source that has ended may still be in use, and goes when the next one is opened.
void WindowPlaces::ended(const std::string& cause) {
  isWaiting_ = false;
  isSoon_ = false;
  if (!std::exchange(reported_, true)) {
    NSLog(
        "surface: the compositor does not tell where its windows are (%@). Until it does, only maximised and "
        "fullscreen ones close the camera",
        cause);
  }
  next_ = EventSource::onTimeout(retryDelay_.next(), [this] { connect(); });
  if (std::exchange(windows_, std::nullopt)) {
    changed_();
  }
}

}  // namespace nivlo
