// The modal alert.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Foundation/NSObject.hpp"

namespace nivlo {

class UIAlertView;

/// Only the plain alert exists here: no text fields.
enum class UIAlertViewStyle : long { Default = 0 };

/// What an alert tells its delegate, on the main thread, in this order: will present, did present, then for a
/// tap clicked, will dismiss and did dismiss; or, where the system takes the alert away, cancel alone.
class UIAlertViewDelegate {
 public:
  virtual ~UIAlertViewDelegate() = default;
  virtual void willPresentAlertView(UIAlertView&) {}
  virtual void didPresentAlertView(UIAlertView&) {}
  virtual void alertViewCancel(UIAlertView&) {}
  virtual void alertViewClickedButtonAtIndex(UIAlertView&, long /*buttonIndex*/) {}
  virtual void alertViewWillDismissWithButtonIndex(UIAlertView&, long /*buttonIndex*/) {}
  virtual void alertViewDidDismissWithButtonIndex(UIAlertView&, long /*buttonIndex*/) {}
  /// Asked once, when the alert is shown.
  virtual bool alertViewShouldEnableFirstOtherButton(UIAlertView&) { return true; }
};

/// Buttons are numbered in the order in which they were added; the cancel button, where there is one, comes
/// first. Main thread only.
class UIAlertView : public NSObject,
                    public UIAlertViewDelegate,
                    public std::enable_shared_from_this<UIAlertView> {
 public:
  using Text = std::optional<std::string>;

  static std::shared_ptr<UIAlertView> initWithTitle(Text title, Text message,
                                                    const std::shared_ptr<UIAlertViewDelegate>& delegate,
                                                    Text cancelButtonTitle,
                                                    const std::vector<std::string>& otherButtonTitles);

  const Text& title() const { return title_; }
  const Text& message() const { return message_; }
  UIAlertViewStyle alertViewStyle() const { return style_; }
  void setAlertViewStyle(UIAlertViewStyle style) { style_ = style; }

  /// Returns the new button's index.
  long addButtonWithTitle(const std::string& title);
  long numberOfButtons() const { return static_cast<long>(buttons_.size()); }
  /// Nothing for an index that no button has.
  Text buttonTitleAtIndex(long index) const;
  /// -1 when there is no cancel button.
  long cancelButtonIndex() const { return cancelButtonIndex_; }
  /// -1 when there is no other button.
  long firstOtherButtonIndex() const;

  /// The delegate is not kept alive; null once it is gone.
  std::shared_ptr<UIAlertViewDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(const std::shared_ptr<UIAlertViewDelegate>& delegate) { delegate_ = delegate; }

  /// What the alert does with the notifications when it is its own delegate. A category brings these methods,
  /// as it cannot add any to this class; without them the alert ignores its own notifications.
  void setCategoryMethods(std::shared_ptr<UIAlertViewDelegate> methods) {
    categoryMethods_ = std::move(methods);
  }

  /// Shows the alert and returns at once; the screen keeps it alive. Nothing happens where it is already
  /// shown, or where nothing can show it.
  void show();
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
