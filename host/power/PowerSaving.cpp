#include "host/power/PowerSaving.hpp"

#include <algorithm>
#include <atomic>
#include <utility>

#include <gio/gio.h>

#include "linux/desktop/bus/SharedBus.hpp"
#include "linux/handles/Owned.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kSavingInterval{400};

using Saving = std::shared_ptr<std::atomic<bool>>;

class SavingReader : public CodeReader {
 public:
  SavingReader(std::unique_ptr<CodeReader> reader, Saving saving)
      : reader_(std::move(reader)), saving_(std::move(saving)) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override { return reader_->look(frame); }
  std::chrono::milliseconds lookInterval() const override {
    return *saving_ ? std::max(kSavingInterval, reader_->lookInterval()) : reader_->lookInterval();
  }

 private:
  std::unique_ptr<CodeReader> reader_;
  Saving saving_;
};

class SavingReaders : public CodeReaderDriver {
 public:
  explicit SavingReaders(std::unique_ptr<CodeReaderDriver> readers)
      : readers_(std::move(readers)), profile_(g_power_profile_monitor_dup_default()) {
    changed_ = g_signal_connect(profile_.get(), "notify::power-saver-enabled", G_CALLBACK(onChange), this);
    follow();
  }
  ~SavingReaders() override { g_signal_handler_disconnect(profile_.get(), changed_); }

  std::vector<std::string> availableTypes() const override { return readers_->availableTypes(); }
  bool canRead() const override { return readers_->canRead(); }
  std::unique_ptr<CodeReader> makeReader() override {
    auto reader = readers_->makeReader();
    return reader ? std::make_unique<SavingReader>(std::move(reader), saving_) : nullptr;
  }

 private:
  static void onChange(GPowerProfileMonitor*, GParamSpec*, gpointer self) {
    static_cast<SavingReaders*>(self)->follow();
  }

  void follow() {
    const bool saves = g_power_profile_monitor_get_power_saver_enabled(profile_.get()) != FALSE;
    if (saves != saving_->exchange(saves)) {
      NSLog(saves ? "codes: the machine saves power, so codes are looked for less often"
                  : "codes: the machine no longer saves power, so codes are looked for as often as usual");
    }
  }

  std::unique_ptr<CodeReaderDriver> readers_;
  Saving saving_ = std::make_shared<std::atomic<bool>>(false);
  SharedBus bus_{G_BUS_TYPE_SYSTEM};  // keeps a lost bus of profile_ from ending the process
  Owned<GPowerProfileMonitor, g_object_unref> profile_;
  gulong changed_ = 0;
};

}  // namespace

std::unique_ptr<CodeReaderDriver> savingPower(std::unique_ptr<CodeReaderDriver> readers) {
  return std::make_unique<SavingReaders>(std::move(readers));
}

}  // namespace nivlo
