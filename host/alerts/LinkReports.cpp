#include "host/alerts/LinkReports.hpp"

#include <utility>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

class LinkReports::NoticingAlerts : public AlertPresenter {
 public:
  NoticingAlerts(std::shared_ptr<LinkReports> reports, std::unique_ptr<AlertPresenter> alerts)
      : reports_(std::move(reports)), alerts_(std::move(alerts)) {}

  void present(AlertContent content, AlertCallbacks callbacks) override {
    callbacks.tapped = [reports = reports_, tapped = std::move(callbacks.tapped)](long index) {
      reports->answering_ = true;
      tapped(index);
      reports->answering_ = false;
    };
    alerts_->present(std::move(content), std::move(callbacks));
  }

  void cancelAll() override { alerts_->cancelAll(); }

 private:
  std::shared_ptr<LinkReports> reports_;
  std::unique_ptr<AlertPresenter> alerts_;
};

void LinkReports::refused(const std::string& explanation) {
  if (std::exchange(answering_, false)) {
    failed(explanation);
  }
}

void LinkReports::failed(const std::string& explanation) const {
  if (const auto& alerts = drivers().alerts) {
    alerts->present(
        {.title = "Link Not Opened", .message = explanation, .buttons = {"OK"}, .cancelButtonIndex = 0},
        {.appeared = [] {}, .tapped = [](long) {}, .cancelled = [] {}, .gone = [] {}});
  }
}

std::unique_ptr<AlertPresenter> LinkReports::noticingAnswers(std::shared_ptr<LinkReports> reports,
                                                             std::unique_ptr<AlertPresenter> alerts) {
  return std::make_unique<NoticingAlerts>(std::move(reports), std::move(alerts));
}

}  // namespace nivlo
