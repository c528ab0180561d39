#include "host/alerts/DesktopDialogs.hpp"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/alerts/DialogConversation.hpp"
#include "host/loop/EventSource.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

using Kind = DialogMessage::Kind;

constexpr int kAttempts = 2;
/// When the compositor ends, nivlo-dialogs does so as well, and this program soon notices. Until then nothing
/// is shown again.
constexpr std::chrono::milliseconds kBeforeNextAttempt{500};

struct Alert {
  std::int64_t number;
  AlertContent content;
  AlertCallbacks callbacks;
  int attempts = 0;
  bool appeared = false;
};

bool canPress(const AlertContent& content, std::int64_t button) {
  return button >= 0 && button < static_cast<std::int64_t>(content.buttons.size()) &&
         button != content.disabledButtonIndex;
}

class Desk : public std::enable_shared_from_this<Desk> {
 public:
  Desk(std::unique_ptr<AlertPresenter> fallbackAlerts, std::unique_ptr<PasteboardDriver> fallbackPasteboard)
      : fallbackAlerts_(std::move(fallbackAlerts)), fallbackPasteboard_(std::move(fallbackPasteboard)) {}

  void present(AlertContent content, AlertCallbacks callbacks) {
    alerts_.push_back({++lastNumber_, std::move(content), std::move(callbacks)});
    offer(lastNumber_);
  }

  void cancelAll() {
    while (!alerts_.empty()) {
      finish(alerts_.back().number, std::nullopt);
    }
    fallbackAlerts_->cancelAll();
  }

  void copy(const std::string& text) {
    copying_ = text;
    if (!say({Kind::Copy, {}, {text}})) {
      copyElsewhere();
    }
  }

 private:
  std::vector<Alert>::iterator find(std::int64_t number) {
    return std::ranges::find(alerts_, number, &Alert::number);
  }

  /// Starts nivlo-dialogs if it is not running.
  bool say(const DialogMessage& message) {
    if (!conversation_ && hasDisplay_) {
      conversation_ = DialogConversation::start([this](const DialogMessage& reply) { hear(reply); },
                                                [this] { processEnded(); });
    }
    return conversation_ && conversation_->send(message);
  }

  void offer(std::int64_t number) {
    auto& alert = *find(number);
    ++alert.attempts;
    std::vector<std::string> texts{alert.content.title, alert.content.message};
    texts.insert(texts.end(), alert.content.buttons.begin(), alert.content.buttons.end());
    if (!say({Kind::Show,
              {number, alert.content.cancelButtonIndex, alert.content.disabledButtonIndex},
              std::move(texts)})) {
      presentElsewhere(number);
    }
  }

  void presentElsewhere(std::int64_t number) {
    const auto place = find(number);
    auto alert = std::move(*place);
    alerts_.erase(place);
    if (alert.appeared) {
      alert.callbacks.appeared = [] {};
    }
    fallbackAlerts_->present(std::move(alert.content), std::move(alert.callbacks));
  }

  void copyElsewhere() {
    if (copying_) {
      fallbackPasteboard_->setString(*std::exchange(copying_, std::nullopt));
    }
  }

  void hear(const DialogMessage& reply) {
    const auto self = shared_from_this();  // a callback may replace the drivers
    if (reply.kind == Kind::Copied) {
      copying_.reset();
      endIfIdle();
      return;
    }
    if (reply.kind == Kind::NoDisplay) {
      reportNoDisplay();
      return;
    }
    const auto place = reply.numbers.empty() ? alerts_.end() : find(reply.numbers.front());
    if (place == alerts_.end()) {
      return;  // it was cancelled meanwhile
    }
    if (reply.kind == Kind::Appeared) {
      if (!std::exchange(place->appeared, true)) {
        place->callbacks.appeared();
      }
    } else if (reply.kind == Kind::Cancelled) {
      finish(place->number, std::nullopt);
    } else if (reply.kind == Kind::Tapped && canPress(place->content, reply.numbers.back())) {
      finish(place->number, reply.numbers.back());
    }
  }

  void finish(std::int64_t number, std::optional<long> button) {
    const auto place = find(number);
    const auto alert = std::move(*place);
    alerts_.erase(place);
    // The window stays until then: some compositors let only the active window set the clipboard.
    if (button) {
      alert.callbacks.tapped(*button);
    } else {
      alert.callbacks.cancelled();
    }
    if (conversation_) {
      conversation_->send({Kind::Close, {number}, {}});
    }
    alert.callbacks.gone();
    endIfIdle();
  }

  void endIfIdle() {
    if (alerts_.empty() && !copying_) {
      conversation_.reset();
    }
  }

  void reportNoDisplay() {
    NSLog(
        "desktop: no Wayland or X11 display can be reached, so no dialogs can be shown; start Nivlo from "
        "within the desktop session");
    hasDisplay_ = false;
    conversation_.reset();
    showAgain();
  }

  void processEnded() {
    NSLog(
        "dialogs: nivlo-dialogs has ended unexpectedly, perhaps because the compositor closed its "
        "connection; what it showed is shown again");
    conversation_.reset();
    nextAttempt_ = EventSource::onTimeout(kBeforeNextAttempt, [this] { showAgain(); });
  }

  void showAgain() {
    nextAttempt_ = EventSource();
    copyElsewhere();
    for (const auto& alert : std::vector<Alert>(alerts_)) {
      if (hasDisplay_ && alert.attempts < kAttempts) {
        offer(alert.number);
      } else {
        presentElsewhere(alert.number);
      }
    }
  }

  std::unique_ptr<AlertPresenter> fallbackAlerts_;
  std::unique_ptr<PasteboardDriver> fallbackPasteboard_;
  std::unique_ptr<DialogConversation> conversation_;  // null while there is nothing to show
  bool hasDisplay_ = true;
  std::int64_t lastNumber_ = 0;
  std::vector<Alert> alerts_;  // oldest first
  std::optional<std::string> copying_;
  EventSource nextAttempt_;
};

class DesktopAlerts : public AlertPresenter {
 public:
  explicit DesktopAlerts(std::shared_ptr<Desk> desk) : desk_(std::move(desk)) {}
  void present(AlertContent content, AlertCallbacks callbacks) override {
    desk_->present(std::move(content), std::move(callbacks));
  }
  void cancelAll() override { desk_->cancelAll(); }

 private:
  std::shared_ptr<Desk> desk_;
};

class DesktopPasteboard : public PasteboardDriver {
 public:
  explicit DesktopPasteboard(std::shared_ptr<Desk> desk) : desk_(std::move(desk)) {}
  void setString(const std::string& text) override { desk_->copy(text); }

 private:
  std::shared_ptr<Desk> desk_;
};

}  // namespace

DesktopDialogs makeDesktopDialogs(std::unique_ptr<AlertPresenter> fallbackAlerts,
                                  std::unique_ptr<PasteboardDriver> fallbackPasteboard) {
  const auto desk = std::make_shared<Desk>(std::move(fallbackAlerts), std::move(fallbackPasteboard));
  return {std::make_unique<DesktopAlerts>(desk), std::make_unique<DesktopPasteboard>(desk)};
}

}  // namespace nivlo
