// What shows an alert to a person.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace nivlo {

/// Everything a presenter needs to draw an alert. The texts may hold anything: control characters, markup,
/// any length.
struct AlertContent {
  std::string title;
  std::string message;
  std::vector<std::string> buttons;
  long cancelButtonIndex = -1;    ///< -1 when there is no cancel button
  long disabledButtonIndex = -1;  ///< a button that cannot be pressed, -1 when there is none
};

/// What a presenter reports back, on the main thread. `appeared` comes first, then either one `tapped` or one
/// `cancelled`.
struct AlertCallbacks {
  std::function<void()> appeared;
  std::function<void(long buttonIndex)> tapped;
  std::function<void()> cancelled;  ///< the system took the alert away; nobody pressed a button
  std::function<void()> gone;       ///< the alert has left the screen; always last
};

/// Alerts stack: a later one lies on top of an earlier one. Main thread only.
class AlertPresenter {
 public:
  virtual ~AlertPresenter() = default;

  /// Shows the alert and returns at once; no callback runs before it has returned.
  virtual void present(AlertContent content, AlertCallbacks callbacks) = 0;

  /// Takes every alert away, the newest first: the program is about to end. Their callbacks run before it
  /// returns.
  virtual void cancelAll() = 0;
};

}  // namespace nivlo
