// A machine of fakes: what stands behind the frameworks while they are tested.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/drivers/Drivers.hpp"
#include "tests/fakes/FakeCameras.hpp"
#include "tests/fakes/ManualMainQueue.hpp"
#include "tests/fakes/RecordingLog.hpp"

namespace nivlo {

/// Finds in every picture what the test has put in view.
class FakeCodeReader : public CodeReaderDriver {
 public:
  std::vector<std::string> types{"org.iso.QRCode", "org.gs1.EAN-13", "org.example.Other"};
  std::atomic<int> looks{0};

  void putInView(std::vector<DecodedCode> codes) {
    const std::lock_guard lock(mutex_);
    codes_.swap(codes);
  }
  std::vector<std::string> availableTypes() const override { return types; }
  std::unique_ptr<CodeReader> makeReader() override { return std::make_unique<Reader>(*this); }

 private:
  struct Reader : CodeReader {
    explicit Reader(FakeCodeReader& owner) : driver(owner) {}
    std::vector<DecodedCode> look(const VideoFrame&) override {
      ++driver.looks;
      const std::lock_guard lock(driver.mutex_);
      return driver.codes_;
    }
    FakeCodeReader& driver;
  };

  std::mutex mutex_;
  std::vector<DecodedCode> codes_;
};

class FakeAccelerometer : public AccelerometerDriver {
 public:
  std::atomic<int> starts{0};
  std::atomic<double> interval{0};  ///< seconds

  std::unique_ptr<AccelerometerStream> start(
      std::chrono::duration<double> seconds,
      std::function<void(const AccelerometerReading&)> handler) override {
    const std::lock_guard lock(mutex_);
    ++starts;
    interval = seconds.count();
    handler_ = std::move(handler);
    return std::make_unique<Stream>(*this);
  }
  /// Goes nowhere while nobody listens.
  void send(const AccelerometerReading& reading) {
    const std::lock_guard lock(mutex_);
    if (handler_) {
      handler_(reading);
    }
  }
  void send(double x, double y, double z) { send({CMAcceleration{x, y, z}, {}}); }
  bool isListenedTo() {
    const std::lock_guard lock(mutex_);
    return handler_ != nullptr;
  }

 private:
  struct Stream : AccelerometerStream {
    explicit Stream(FakeAccelerometer& owner) : driver(owner) {}
    ~Stream() override {
      std::function<void(const AccelerometerReading&)> ended;
      const std::lock_guard lock(driver.mutex_);
      ended.swap(driver.handler_);
    }
    FakeAccelerometer& driver;
  };

  std::mutex mutex_;
  std::function<void(const AccelerometerReading&)> handler_;
};

/// The last of `shown` lies on top.
class FakeAlerts : public AlertPresenter {
 public:
  std::vector<AlertContent> shown;

  void present(AlertContent content, AlertCallbacks callbacks) override {
    shown.push_back(std::move(content));
    callbacks_.push_back(std::move(callbacks));
  }
  AlertCallbacks takeTop() {
    auto top = std::move(callbacks_.back());
    callbacks_.pop_back();
    shown.pop_back();
    return top;
  }
  void tapTop(long buttonIndex) {
    const auto top = takeTop();
    top.appeared();
    top.tapped(buttonIndex);
    top.gone();
  }
  void cancelAll() override {
    while (!shown.empty()) {
      const auto top = takeTop();
      top.appeared();
      top.cancelled();
      top.gone();
    }
  }

 private:
  std::vector<AlertCallbacks> callbacks_;
};

struct FakePasteboard : PasteboardDriver {
  std::vector<std::string> texts;
  void setString(const std::string& text) override { texts.push_back(text); }
};

struct FakeURLOpener : URLOpener {
  bool canOpen = true;
  std::function<void()> onAsked;
  std::vector<std::string> asked, opened;
  bool canOpenURL(const std::string& url) override {
    asked.push_back(url);
    if (onAsked) {
      onAsked();
    }
    return canOpen;
  }
  bool openURL(const std::string& url) override {
    opened.push_back(url);
    return true;
  }
};

/// Installs the fakes for as long as it lives. What uses them must be gone before it.
class FakeMachine {
  Drivers made_;
  template <typename Fake, typename Driver>
  static Fake& make(std::unique_ptr<Driver>& slot) {
    auto fake = std::make_unique<Fake>();
    auto& reference = *fake;
    slot = std::move(fake);
    return reference;
  }

 public:
  RecordingLog& log = make<RecordingLog>(made_.logSink);
  ManualMainQueue& mainQueue = make<ManualMainQueue>(made_.mainQueue);
  FakeCameras& cameras = make<FakeCameras>(made_.cameras);
  FakeCodeReader& reader = make<FakeCodeReader>(made_.codeReader);
  FakeAccelerometer& accelerometer = make<FakeAccelerometer>(made_.accelerometer);
  FakeAlerts& alerts = make<FakeAlerts>(made_.alerts);
  FakePasteboard& pasteboard = make<FakePasteboard>(made_.pasteboard);
  FakeURLOpener& urls = make<FakeURLOpener>(made_.urls);

  FakeMachine() { installDrivers(std::move(made_)); }
  ~FakeMachine() {
    mainQueue.drain();
    installDrivers({});
  }

  /// Waits until the open cameras have delivered this many frames more.
  bool watchFrames(int count) {
    return test::waitFor([this, wanted = cameras.frames + count] { return cameras.frames >= wanted; });
  }
};

}  // namespace nivlo
