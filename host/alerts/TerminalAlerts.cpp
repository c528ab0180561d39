#include "host/alerts/TerminalAlerts.hpp"

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <termios.h>
#include <unistd.h>

#include "host/loop/EventSource.hpp"
#include "host/text/VisibleText.hpp"
#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kLongestLine = 4096;  // bytes
constexpr std::chrono::seconds kBackgroundCheck{1};

std::optional<long> parseIndex(std::string_view text) {
  long index = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(index) : std::nullopt;
}

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  return first == std::string_view::npos ? ""
                                         : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

class TerminalAlerts : public AlertPresenter, public std::enable_shared_from_this<TerminalAlerts> {
 public:
  TerminalAlerts(std::ostream& out, int input) : out_(out), input_(input) {}

  void present(AlertContent content, AlertCallbacks callbacks) override {
    alerts_.push_back({std::move(content), std::move(callbacks)});
    // Deferred, because no callback may run before present() has returned.
    dispatch_async(dispatch_get_main_queue(), [self = weak_from_this()] {
      if (const auto alerts = self.lock()) {
        alerts->appear();
      }
    });
  }

  void cancelAll() override {
    while (!alerts_.empty()) {
      const auto alert = std::move(alerts_.back());
      alerts_.pop_back();
      out_ << "\n(the dialog is cancelled)\n" << std::flush;
      alert.callbacks.cancelled();
      alert.callbacks.gone();
    }
    awaited_ = EventSource();
  }

 private:
  struct Alert {
    AlertContent content;
    AlertCallbacks callbacks;
    bool appeared = false;
  };

  void appear() {
    if ((alerts_.empty() || !alerts_.front().appeared) && mayUseInput()) {
      // Keys typed before the question was asked are not an answer to it. This has no effect on a pipe, whose
      // lines were meant as answers.
      tcflush(input_, TCIFLUSH);
    }
    for (std::size_t i = 0; i < alerts_.size(); ++i) {
      if (!alerts_[i].appeared) {
        alerts_[i].appeared = true;
        print(alerts_[i].content);
        alerts_[i].callbacks.appeared();
      }
    }
    answerFromInput();
  }

  void print(const AlertContent& content) {
    out_ << "\n== " << visibleText(content.title) << " ==\n" << visibleText(content.message) << '\n';
    for (std::size_t i = 0; i < content.buttons.size(); ++i) {
      out_ << "  " << i << ") " << visibleText(content.buttons[i])
           << (static_cast<long>(i) == content.disabledButtonIndex ? " (not available)" : "") << '\n';
    }
    out_ << (content.buttons.empty() ? "Enter closes this: " : "Number, then Enter: ") << std::flush;
  }

  /// Answers the open alerts with the lines read so far, and waits for more input only while an alert is
  /// open.
  void answerFromInput() {
    while (isAsking()) {
      const auto end = pending_.find('\n');
      if (end == std::string::npos) {
        break;
      }
      const std::string line = pending_.substr(0, end);
      pending_.erase(0, end + 1);
      answer(trimmed(line));
    }
    awaitInput();
  }

  void awaitInput() {
    if (!isAsking()) {
      awaited_ = EventSource();
    } else if (mayUseInput()) {
      awaited_ = EventSource::onReadable(input_, [this] { read(); });
    } else {
      awaited_ = EventSource::onTimeout(kBackgroundCheck, [this] { awaitInput(); });
    }
  }

  /// False while the input is a terminal that a shell has given to another job. What is typed then is meant
  /// for that job, and the terminal stops a job of the background that reads or flushes it.
  bool mayUseInput() const {
    const auto foreground = tcgetpgrp(input_);
    return foreground < 0 || foreground == getpgrp();
  }

  bool isAsking() const { return !alerts_.empty() && alerts_.back().appeared; }

  void read() {
    std::array<char, 4096> buffer;
    const auto count = mayUseInput() ? ::read(input_, buffer.data(), buffer.size()) : -1;
    if (count < 0 && (errno == EAGAIN || errno == EINTR || !mayUseInput())) {
      awaitInput();
      return;
    }
    if (count > 0) {
      pending_.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (!pending_.empty()) {
      pending_ += '\n';  // The last line needs no line break.
    } else {
      escape();
    }
    if (pending_.size() > kLongestLine && pending_.find('\n') == std::string::npos) {
      pending_.clear();
    }
    answerFromInput();
  }

  void answer(std::string_view line) {
    const auto& content = alerts_.back().content;
    if (content.buttons.empty()) {
      finish(std::nullopt);
      return;
    }
    if (line.empty()) {
      return;
    }
    const auto index = parseIndex(line);
    const auto buttons = static_cast<long>(content.buttons.size());
    if (!index || *index < 0 || *index >= buttons || *index == content.disabledButtonIndex) {
      out_ << "Please write the number of one of the buttons, 0 to " << buttons - 1 << ": " << std::flush;
      return;
    }
    finish(*index);
  }

  /// Does what Escape does to a dialog of the desktop: it presses the cancel button or, where there is none,
  /// the last one.
  void escape() {
    const auto& content = alerts_.back().content;
    const auto last = static_cast<long>(content.buttons.size()) - 1;
    const auto button = content.cancelButtonIndex >= 0 ? content.cancelButtonIndex : last;
    out_ << '\n';
    finish(button >= 0 && button != content.disabledButtonIndex ? std::optional(button) : std::nullopt);
  }

  void finish(std::optional<long> button) {
    const auto alert = std::move(alerts_.back());
    alerts_.pop_back();
    if (button) {
      alert.callbacks.tapped(*button);
    } else {
      alert.callbacks.cancelled();
    }
    alert.callbacks.gone();
    showAgain();
  }

  /// Prints the alert below the answered one again, unless answering has put a new alert on top of it.
  void showAgain() {
    if (isAsking()) {
      print(alerts_.back().content);
    }
  }

  std::ostream& out_;
  int input_;
  EventSource awaited_;
  std::string pending_;
  std::vector<Alert> alerts_;
};

/// Owns the presenter through a shared pointer, so that work on the main queue can hold a weak reference to
/// it.
class SharedTerminalAlerts : public AlertPresenter {
 public:
  SharedTerminalAlerts(std::ostream& out, int input)
      : alerts_(std::make_shared<TerminalAlerts>(out, input)) {}
  void present(AlertContent content, AlertCallbacks callbacks) override {
    alerts_->present(std::move(content), std::move(callbacks));
  }
  void cancelAll() override { alerts_->cancelAll(); }

 private:
  std::shared_ptr<TerminalAlerts> alerts_;
};

}  // namespace

std::unique_ptr<AlertPresenter> makeTerminalAlerts(std::ostream& out, int inputDescriptor) {
  return std::make_unique<SharedTerminalAlerts>(out, inputDescriptor);
}

}  // namespace nivlo
