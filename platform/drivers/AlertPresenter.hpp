// The driver that shows alerts to the user.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace nivlo {

/// The texts and buttons of an alert. The texts come from scanned codes too, so they may hold anything:
/// control characters, markup, and any number of characters.
struct AlertContent {
  std::string title;
  std::string message;
  std::vector<std::string> buttons;  ///< their titles; an alert without buttons is possible
  long cancelButtonIndex = -1;       ///< -1 when there is no cancel button
  long disabledButtonIndex = -1;     ///< the button that cannot be pressed; -1 when all can
};

/// Handlers that a presenter calls on the main thread: `appeared`, then either `tapped` or `cancelled`, then
/// `gone`, each once.
struct AlertCallbacks {
  std::function<void()> appeared;
  std::function<void(long buttonIndex)> tapped;
  std::function<void()> cancelled;  ///< the alert was taken away before a button was pressed
  std::function<void()> gone;       ///< the alert has left the screen
};

/// Shows alerts, a later one on top of an earlier one. Main thread only.
class AlertPresenter {
 public:
  virtual ~AlertPresenter() = default;

  /// Shows the alert and returns at once; no callback runs before it has returned.
  virtual void present(AlertContent content, AlertCallbacks callbacks) = 0;

  /// Takes all alerts away, the newest first, when the program is about to end. Their callbacks have run when
  /// this returns.
  virtual void cancelAll() = 0;
};

}  // namespace nivlo
