// Alerts: short dialogs with buttons.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Foundation/NSObject.hpp"

namespace nivlo {

class UIAlertView;

/// The look of an alert. There are no alerts with text fields here, so there is one style only.
enum class UIAlertViewStyle : long { Default = 0 };

/// Is told what happens to an alert, on the main thread. An alert that the user answers calls, in this order,
/// willPresent, didPresent, clickedButton, willDismiss and didDismiss. One that the system takes away calls
/// cancel in place of the last three.
class UIAlertViewDelegate {
 public:
  virtual ~UIAlertViewDelegate() = default;
  virtual void willPresentAlertView(UIAlertView&) {}
  virtual void didPresentAlertView(UIAlertView&) {}
  virtual void alertViewCancel(UIAlertView&) {}
  virtual void alertViewClickedButtonAtIndex(UIAlertView&, long /*buttonIndex*/) {}
  virtual void alertViewWillDismissWithButtonIndex(UIAlertView&, long /*buttonIndex*/) {}
  virtual void alertViewDidDismissWithButtonIndex(UIAlertView&, long /*buttonIndex*/) {}
  /// Returns whether the first button other than the cancel button can be pressed. Called once, when the
  /// alert is shown.
  virtual bool alertViewShouldEnableFirstOtherButton(UIAlertView&) { return true; }
};

/// An alert: a title, a message and buttons. Its buttons have indexes from 0, in the order in which they were
/// added; a cancel button that was given to initWithTitle comes first. The screen keeps a shown alert alive,
/// so its maker may drop it. An alert can be shown again after it has been dismissed. Main thread only.
class UIAlertView : public NSObject,
                    public UIAlertViewDelegate,
                    public std::enable_shared_from_this<UIAlertView> {
 public:
  /// A text in UTF-8; absent where the alert has none.
  using Text = std::optional<std::string>;

  /// Makes an alert without showing it. Without a cancel button title there is no cancel button.
  static std::shared_ptr<UIAlertView> initWithTitle(Text title, Text message,
                                                    const std::shared_ptr<UIAlertViewDelegate>& delegate,
                                                    Text cancelButtonTitle,
                                                    const std::vector<std::string>& otherButtonTitles);

  const Text& title() const { return title_; }
  const Text& message() const { return message_; }
  UIAlertViewStyle alertViewStyle() const { return style_; }
  void setAlertViewStyle(UIAlertViewStyle style) { style_ = style; }

  /// Adds a button and returns its index. An alert that is shown does not change.
  long addButtonWithTitle(const std::string& title);
  long numberOfButtons() const { return static_cast<long>(buttons_.size()); }
  /// Absent when no button has this index.
  Text buttonTitleAtIndex(long index) const;
  /// 0, or -1 when there is no cancel button.
  long cancelButtonIndex() const { return cancelButtonIndex_; }
  /// The index of the first button after the cancel button, or -1 when there is none.
  long firstOtherButtonIndex() const;

  /// Null when there is no delegate, or when it is gone: an alert does not keep its delegate alive.
  std::shared_ptr<UIAlertViewDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(const std::shared_ptr<UIAlertViewDelegate>& delegate) { delegate_ = delegate; }

  /// Sets what the alert does when it is its own delegate: it then passes what it is told on to `methods`,
  /// and ignores it while they are null. That is how a category gives this class delegate methods from
  /// outside.
  void setCategoryMethods(std::shared_ptr<UIAlertViewDelegate> methods) {
    categoryMethods_ = std::move(methods);
  }

  /// Shows the alert, on top of those that are shown already, and returns at once. Does nothing while the
  /// alert is shown, and on a machine that cannot show any.
  void show();
  /// Returns whether the alert is on the screen, or leaving it.
  bool isVisible() const { return state_ == State::Visible || state_ == State::Dismissing; }

  void willPresentAlertView(UIAlertView& alert) override;
  void didPresentAlertView(UIAlertView& alert) override;
  void alertViewCancel(UIAlertView& alert) override;
  void alertViewClickedButtonAtIndex(UIAlertView& alert, long buttonIndex) override;
  void alertViewWillDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) override;
  void alertViewDidDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) override;
  bool alertViewShouldEnableFirstOtherButton(UIAlertView& alert) override;

 private:
  enum class State { Hidden, Visible, Dismissing };

  UIAlertView(Text title, Text message) : title_(std::move(title)), message_(std::move(message)) {}
  void tapped(long buttonIndex);
  void cancelled();
  void gone();

  Text title_;
  Text message_;
  UIAlertViewStyle style_ = UIAlertViewStyle::Default;
  std::vector<std::string> buttons_;
  long cancelButtonIndex_ = -1;
  std::weak_ptr<UIAlertViewDelegate> delegate_;
  std::shared_ptr<UIAlertViewDelegate> categoryMethods_;
  State state_ = State::Hidden;
  std::optional<long> tappedIndex_;
};

}  // namespace nivlo
