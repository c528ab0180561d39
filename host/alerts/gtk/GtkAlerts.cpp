#include "host/alerts/gtk/GtkAlerts.hpp"

#include <algorithm>
#include <utility>

#include "host/alerts/gtk/AlertDialog.hpp"
#include "host/alerts/gtk/DialogWindows.hpp"
#include "host/alerts/gtk/Toolkit.hpp"
#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

namespace {

struct Alert {
  AlertContent content;
  AlertCallbacks callbacks;
  std::unique_ptr<AlertDialog> dialog;
};

class GtkAlerts : public AlertPresenter {
 public:
  explicit GtkAlerts(std::unique_ptr<AlertPresenter> fallback) : fallback_(std::move(fallback)) {}

  void present(AlertContent content, AlertCallbacks callbacks) override {
    if (!startToolkit()) {
      fallback_->present(std::move(content), std::move(callbacks));
      return;
    }
    alerts_.push_back(std::make_shared<Alert>(Alert{std::move(content), std::move(callbacks), nullptr}));
    // Deferred, because no callback may run before present() has returned.
    dispatch_async(dispatch_get_main_queue(), [this, waiting = std::weak_ptr(alerts_.back())] {
      if (const auto alert = waiting.lock()) {
        show(*alert);
      }
    });
  }

  void cancelAll() override {
    while (!alerts_.empty()) {
      finish(*alerts_.back(), std::nullopt);
    }
    fallback_->cancelAll();
  }

 private:
  void show(Alert& alert) {
    alert.dialog = std::make_unique<AlertDialog>(
        windows_, alert.content, [this, &alert](std::optional<long> button) { finish(alert, button); });
    alert.callbacks.appeared();
  }

  void finish(const Alert& finished, std::optional<long> button) {
    const auto place = std::find_if(alerts_.begin(), alerts_.end(),
                                    [&](const auto& alert) { return alert.get() == &finished; });
    const auto alert = *place;
    alerts_.erase(place);
    if (button) {
      alert->callbacks.tapped(*button);
    } else {
      alert->callbacks.cancelled();
    }
    alert->dialog.reset();
    alert->callbacks.gone();
  }

  std::unique_ptr<AlertPresenter> fallback_;
  DialogWindows windows_;
  std::vector<std::shared_ptr<Alert>> alerts_;  // oldest first
};

}  // namespace

std::unique_ptr<AlertPresenter> makeGtkAlerts(std::unique_ptr<AlertPresenter> fallback) {
  return std::make_unique<GtkAlerts>(std::move(fallback));
}

}  // namespace nivlo
