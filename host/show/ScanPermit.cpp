#include "host/show/ScanPermit.hpp"

#include <utility>

namespace nivlo {

namespace {

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

std::unique_ptr<AlertPresenter> withholding(std::shared_ptr<ScanPermit> permit,
                                            std::unique_ptr<AlertPresenter> alerts) {
  return std::make_unique<WithholdingAlerts>(std::move(permit), std::move(alerts));
}

}  // namespace nivlo
