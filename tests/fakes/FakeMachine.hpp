// Fakes of the drivers, to put behind the frameworks under test.
#pragma once

#include <atomic>
#include <functional>
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

/// Finds in every frame the codes that the test has put in view. Callable from any thread, except `types`.
class FakeCodeReader : public CodeReaderDriver {
 public:
  std::vector<std::string> types{"org.iso.QRCode", "org.gs1.EAN-13", "org.example.Other"};
  std::atomic<int> looks{0};        ///< frames looked at so far by all readers
  std::atomic<bool> mayLook{true};  ///< the answer of the readers
  std::function<void()> onLook;     ///< called by each look, on its thread; change it while none is possible

  /// Replaces the codes in view.
  void putInView(std::vector<DecodedCode> codes) {
    const std::lock_guard lock(mutex_);
    codes_.swap(codes);
  }
  std::vector<std::string> availableTypes() const override { return types; }
  bool canRead() const override { return true; }
  std::unique_ptr<CodeReader> makeReader() override { return std::make_unique<Reader>(*this); }

 private:
  struct Reader : CodeReader {
    explicit Reader(FakeCodeReader& owner) : driver(owner) {}
    std::vector<DecodedCode> look(const VideoFrame&) override {
      ++driver.looks;
      if (driver.onLook) {
        driver.onLook();
      }
      const std::lock_guard lock(driver.mutex_);
      return driver.codes_;
    }
    bool mayLook() const override { return driver.mayLook; }
    FakeCodeReader& driver;
  };

  std::mutex mutex_;
  std::vector<DecodedCode> codes_;
};

/// Delivers the samples that the test sends. Callable from any thread.
class FakeAccelerometer : public AccelerometerDriver {
 public:
  std::atomic<int> starts{0};       ///< how often it has been started
  std::atomic<double> interval{0};  ///< seconds, as the last start asked for

  std::unique_ptr<AccelerometerStream> start(
      std::chrono::duration<double> seconds,
      std::function<void(const AccelerometerReading&)> handler) override {
    const std::lock_guard lock(mutex_);
    ++starts;
    interval = seconds.count();
    handler_ = std::move(handler);
    return std::make_unique<Stream>(*this);
  }
  /// Calls the handler on this thread, or does nothing if the accelerometer is not started.
  void send(const AccelerometerReading& reading) {
    const std::lock_guard lock(mutex_);
    if (handler_) {
      handler_(reading);
    }
  }
  /// In units of g.
  void send(double x, double y, double z) { send({CMAcceleration{x, y, z}, {}}); }
  /// Returns whether it is started.
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

/// Records the alerts that are presented and answers them as the test says.
class FakeAlerts : public AlertPresenter {
 public:
  std::vector<AlertContent> shown;  ///< bottom to top

  void present(AlertContent content, AlertCallbacks callbacks) override {
    shown.push_back(std::move(content));
    callbacks_.push_back(std::move(callbacks));
  }
  /// Removes the top alert and returns its callbacks, for the test to call. There must be one.
  AlertCallbacks takeTop() {
    auto top = std::move(callbacks_.back());
    callbacks_.pop_back();
    shown.pop_back();
    return top;
  }
  /// Taps a button of the top alert, which then disappears.
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
  std::vector<std::string> texts;  ///< all that were copied, in order
  void setString(const std::string& text) override { texts.push_back(text); }
};

struct FakeURLOpener : URLOpener {
  bool canOpen = true;                     ///< the answer of canOpenURL
  std::function<void()> onAsked;           ///< called by canOpenURL before it answers
  std::vector<std::string> asked, opened;  ///< the URLs passed to canOpenURL and to openURL
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

/// Installs the fakes until it is destroyed. Destroy what uses them first.
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

  /// Waits until the open cameras have delivered `count` more frames. False on timeout.
  bool watchFrames(int count) {
    return test::waitFor([this, wanted = cameras.frames + count] { return cameras.frames >= wanted; });
  }
};

}  // namespace nivlo
