#include <any>
#include <utility>

#include "bundle/UIAlertView+Blocks/UIAlertView+Blocks.hpp"

namespace nivlo {

namespace {

// The value of each key is its own address, so no two keys are equal.
const void* const UIAlertViewTapBlockKey = &UIAlertViewTapBlockKey;
const void* const UIAlertViewWillDismissBlockKey = &UIAlertViewWillDismissBlockKey;
const void* const UIAlertViewDidDismissBlockKey = &UIAlertViewDidDismissBlockKey;
const void* const UIAlertViewWillPresentBlockKey = &UIAlertViewWillPresentBlockKey;
const void* const UIAlertViewDidPresentBlockKey = &UIAlertViewDidPresentBlockKey;
const void* const UIAlertViewCancelBlockKey = &UIAlertViewCancelBlockKey;
const void* const UIAlertViewShouldEnableFirstOtherButtonBlockKey =
    &UIAlertViewShouldEnableFirstOtherButtonBlockKey;
const void* const UIAlertViewOriginalDelegateKey = &UIAlertViewOriginalDelegateKey;

template <typename Value>
Value attached(const UIAlertView& alert, const void* key) {
  auto value = alert.associatedObject(key);
  auto* held = std::any_cast<Value>(&value);
  return held ? std::move(*held) : Value();
}

/// The delegate from before the first closure; null when it is gone.
std::shared_ptr<UIAlertViewDelegate> originalDelegate(const UIAlertView& alert) {
  return attached<std::weak_ptr<UIAlertViewDelegate>>(alert, UIAlertViewOriginalDelegateKey).lock();
}

/// Calls the closure, and then the earlier delegate, with the same arguments.
template <typename Block, typename Notification, typename... Arguments>
void notify(UIAlertView& alert, const void* key, Notification notification, Arguments... arguments) {
  if (const auto block = attached<Block>(alert, key)) {
    block(alert, arguments...);
  }
  if (const auto delegate = originalDelegate(alert)) {
    ((*delegate).*notification)(alert, arguments...);
  }
}

/// The delegate's methods that this category adds to every alert: they call the alert's closures.
class Blocks : public UIAlertViewDelegate {
 public:
  void willPresentAlertView(UIAlertView& alert) override {
    notify<UIAlertViewBlock>(alert, UIAlertViewWillPresentBlockKey,
                             &UIAlertViewDelegate::willPresentAlertView);
  }
  void didPresentAlertView(UIAlertView& alert) override {
    notify<UIAlertViewBlock>(alert, UIAlertViewDidPresentBlockKey, &UIAlertViewDelegate::didPresentAlertView);
  }
  void alertViewCancel(UIAlertView& alert) override {
    notify<UIAlertViewBlock>(alert, UIAlertViewCancelBlockKey, &UIAlertViewDelegate::alertViewCancel);
  }
  void alertViewClickedButtonAtIndex(UIAlertView& alert, long buttonIndex) override {
    notify<UIAlertViewCompletionBlock>(alert, UIAlertViewTapBlockKey,
                                       &UIAlertViewDelegate::alertViewClickedButtonAtIndex, buttonIndex);
  }
  void alertViewWillDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) override {
    notify<UIAlertViewCompletionBlock>(alert, UIAlertViewWillDismissBlockKey,
                                       &UIAlertViewDelegate::alertViewWillDismissWithButtonIndex,
                                       buttonIndex);
  }
  void alertViewDidDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) override {
    notify<UIAlertViewCompletionBlock>(alert, UIAlertViewDidDismissBlockKey,
                                       &UIAlertViewDelegate::alertViewDidDismissWithButtonIndex, buttonIndex);
  }
  bool alertViewShouldEnableFirstOtherButton(UIAlertView& alert) override {
    if (const auto block = shouldEnableFirstOtherButtonBlock(alert)) {
      return block(alert);
    }
    const auto delegate = originalDelegate(alert);
    return !delegate || delegate->alertViewShouldEnableFirstOtherButton(alert);
  }
};

void _checkAlertViewDelegate(UIAlertView& alert) {
  const auto current = alert.delegate();
  if (current.get() == &alert) {
    return;
  }
  alert.setAssociatedObject(UIAlertViewOriginalDelegateKey, std::weak_ptr<UIAlertViewDelegate>(current));
  static const auto blocks = std::make_shared<Blocks>();
  alert.setCategoryMethods(blocks);
  alert.setDelegate(alert.shared_from_this());
}

template <typename Block>
void attach(UIAlertView& alert, const void* key, Block block) {
  _checkAlertViewDelegate(alert);
  alert.setAssociatedObject(key, std::move(block));
}

}  // namespace

void showWithTitle(const UIAlertView::Text& title, const UIAlertView::Text& message, UIAlertViewStyle style,
                   const UIAlertView::Text& cancelButtonTitle,
                   const std::vector<std::string>& otherButtonTitles,
                   const UIAlertViewCompletionBlock& tapBlock) {
  const auto alert = UIAlertView::initWithTitle(title, message, nullptr, cancelButtonTitle, {});
  alert->setAlertViewStyle(style);
  for (const auto& other : otherButtonTitles) {
    alert->addButtonWithTitle(other);
  }
  if (tapBlock) {
    setTapBlock(*alert, tapBlock);
  }
  alert->show();
}

void showWithTitle(const UIAlertView::Text& title, const UIAlertView::Text& message,
                   const UIAlertView::Text& cancelButtonTitle,
                   const std::vector<std::string>& otherButtonTitles,
                   const UIAlertViewCompletionBlock& tapBlock) {
  showWithTitle(title, message, UIAlertViewStyle::Default, cancelButtonTitle, otherButtonTitles, tapBlock);
}

UIAlertViewCompletionBlock tapBlock(const UIAlertView& alert) {
  return attached<UIAlertViewCompletionBlock>(alert, UIAlertViewTapBlockKey);
}
void setTapBlock(UIAlertView& alert, UIAlertViewCompletionBlock block) {
  attach(alert, UIAlertViewTapBlockKey, std::move(block));
}

UIAlertViewCompletionBlock willDismissBlock(const UIAlertView& alert) {
  return attached<UIAlertViewCompletionBlock>(alert, UIAlertViewWillDismissBlockKey);
}
void setWillDismissBlock(UIAlertView& alert, UIAlertViewCompletionBlock block) {
  attach(alert, UIAlertViewWillDismissBlockKey, std::move(block));
}

UIAlertViewCompletionBlock didDismissBlock(const UIAlertView& alert) {
  return attached<UIAlertViewCompletionBlock>(alert, UIAlertViewDidDismissBlockKey);
}
void setDidDismissBlock(UIAlertView& alert, UIAlertViewCompletionBlock block) {
  attach(alert, UIAlertViewDidDismissBlockKey, std::move(block));
}

UIAlertViewBlock willPresentBlock(const UIAlertView& alert) {
  return attached<UIAlertViewBlock>(alert, UIAlertViewWillPresentBlockKey);
}
void setWillPresentBlock(UIAlertView& alert, UIAlertViewBlock block) {
  attach(alert, UIAlertViewWillPresentBlockKey, std::move(block));
}

UIAlertViewBlock didPresentBlock(const UIAlertView& alert) {
  return attached<UIAlertViewBlock>(alert, UIAlertViewDidPresentBlockKey);
}
void setDidPresentBlock(UIAlertView& alert, UIAlertViewBlock block) {
  attach(alert, UIAlertViewDidPresentBlockKey, std::move(block));
}

UIAlertViewBlock cancelBlock(const UIAlertView& alert) {
  return attached<UIAlertViewBlock>(alert, UIAlertViewCancelBlockKey);
}
void setCancelBlock(UIAlertView& alert, UIAlertViewBlock block) {
  attach(alert, UIAlertViewCancelBlockKey, std::move(block));
}

UIAlertViewQueryBlock shouldEnableFirstOtherButtonBlock(const UIAlertView& alert) {
  return attached<UIAlertViewQueryBlock>(alert, UIAlertViewShouldEnableFirstOtherButtonBlockKey);
}
void setShouldEnableFirstOtherButtonBlock(UIAlertView& alert, UIAlertViewQueryBlock block) {
  attach(alert, UIAlertViewShouldEnableFirstOtherButtonBlockKey, std::move(block));
}

}  // namespace nivlo
