#include "host/show/ScanPermit.hpp"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace nivlo {

namespace {

class PermittedReader : public CodeReader {
 public:
  PermittedReader(std::unique_ptr<CodeReader> reader, std::shared_ptr<const ScanPermit> permit)
      : reader_(std::move(reader)), permit_(std::move(permit)) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override { return reader_->look(frame); }
  bool mayLook() const override { return permit_->isGiven() && reader_->mayLook(); }
  std::chrono::milliseconds lookInterval() const override { return reader_->lookInterval(); }

 private:
  std::unique_ptr<CodeReader> reader_;
  std::shared_ptr<const ScanPermit> permit_;
};

class PermittedReaders : public CodeReaderDriver {
 public:
  PermittedReaders(std::unique_ptr<CodeReaderDriver> readers, std::shared_ptr<const ScanPermit> permit)
      : readers_(std::move(readers)), permit_(std::move(permit)) {}

  std::vector<std::string> availableTypes() const override { return readers_->availableTypes(); }
  bool canRead() const override { return readers_->canRead(); }
  std::unique_ptr<CodeReader> makeReader() override {
    auto reader = readers_->makeReader();
    return reader ? std::make_unique<PermittedReader>(std::move(reader), permit_) : nullptr;
  }

 private:
  std::unique_ptr<CodeReaderDriver> readers_;
  std::shared_ptr<const ScanPermit> permit_;
};

class WithholdingAlerts : public AlertPresenter {
 public:
  WithholdingAlerts(std::shared_ptr<ScanPermit> permit, std::unique_ptr<AlertPresenter> alerts)
      : permit_(std::move(permit)), alerts_(std::move(alerts)) {}

  void present(AlertContent content, AlertCallbacks callbacks) override {
    if (content.buttons.size() > 1) {
      permit_->questionAsked();
      // An answer counts before it is acted on, which may take a while.
      callbacks.tapped = [permit = permit_, tapped = std::move(callbacks.tapped)](long index) {
        permit->questionAnswered();
        tapped(index);
      };
      callbacks.cancelled = [permit = permit_, cancelled = std::move(callbacks.cancelled)] {
        permit->questionAnswered();
        cancelled();
      };
    }
    alerts_->present(std::move(content), std::move(callbacks));
  }

  void cancelAll() override { alerts_->cancelAll(); }

 private:
  std::shared_ptr<ScanPermit> permit_;
  std::unique_ptr<AlertPresenter> alerts_;
};

}  // namespace

std::unique_ptr<CodeReaderDriver> permitted(std::unique_ptr<CodeReaderDriver> readers,
                                            std::shared_ptr<const ScanPermit> permit) {
  return std::make_unique<PermittedReaders>(std::move(readers), std::move(permit));
}

std::unique_ptr<AlertPresenter> withholding(std::shared_ptr<ScanPermit> permit,
                                            std::unique_ptr<AlertPresenter> alerts) {
  return std::make_unique<WithholdingAlerts>(std::move(permit), std::move(alerts));
}

}  // namespace nivlo
