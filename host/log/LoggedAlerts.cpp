#include "host/log/LoggedAlerts.hpp"

#include <utility>

#include "host/text/VisibleText.hpp"
#include "kit/MFLog/MFLog.hpp"

namespace nivlo {

namespace {

class LoggedAlerts : public AlertPresenter {
 public:
  explicit LoggedAlerts(std::unique_ptr<AlertPresenter> alerts) : alerts_(std::move(alerts)) {}

  void present(AlertContent content, AlertCallbacks callbacks) override {
    MFInfo("dialog shown: %@", visibleText(content.title));
    auto tapped = std::move(callbacks.tapped);
    auto cancelled = std::move(callbacks.cancelled);
    callbacks.tapped = [tapped, buttons = content.buttons](long index) {
      MFInfo("dialog answered: %@", visibleText(buttons.at(static_cast<std::size_t>(index))));
      tapped(index);
    };
    callbacks.cancelled = [cancelled] {
      MFInfo("dialog cancelled by the system");
      cancelled();
    };
    alerts_->present(std::move(content), std::move(callbacks));
  }

  void cancelAll() override { alerts_->cancelAll(); }

 private:
  std::unique_ptr<AlertPresenter> alerts_;
};

}  // namespace

std::unique_ptr<AlertPresenter> logged(std::unique_ptr<AlertPresenter> alerts) {
  return std::make_unique<LoggedAlerts>(std::move(alerts));
}

}  // namespace nivlo
