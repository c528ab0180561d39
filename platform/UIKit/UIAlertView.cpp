#include "platform/UIKit/UIAlertView.hpp"

#include <utility>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

/// The delegate or, when it is null, one that ignores everything.
std::shared_ptr<UIAlertViewDelegate> orSilent(std::shared_ptr<UIAlertViewDelegate> delegate) {
  static const auto silent = std::make_shared<UIAlertViewDelegate>();
  if (!delegate) {
    delegate = silent;
  }
  return delegate;
}

}  // namespace

std::shared_ptr<UIAlertView> UIAlertView::initWithTitle(Text title, Text message,
                                                        const std::shared_ptr<UIAlertViewDelegate>& delegate,
                                                        Text cancelButtonTitle,
                                                        const std::vector<std::string>& otherButtonTitles) {
  std::shared_ptr<UIAlertView> alert(new UIAlertView(std::move(title), std::move(message)));
  alert->setDelegate(delegate);
  if (cancelButtonTitle) {
    alert->cancelButtonIndex_ = alert->addButtonWithTitle(*cancelButtonTitle);
  }
  for (const auto& other : otherButtonTitles) {
    alert->addButtonWithTitle(other);
  }
  return alert;
}

long UIAlertView::addButtonWithTitle(const std::string& title) {
  buttons_.push_back(title);
  return numberOfButtons() - 1;
}

UIAlertView::Text UIAlertView::buttonTitleAtIndex(long index) const {
  return index >= 0 && index < numberOfButtons() ? Text(buttons_[static_cast<std::size_t>(index)])
                                                 : std::nullopt;
}

long UIAlertView::firstOtherButtonIndex() const {
  const long first = cancelButtonIndex_ < 0 ? 0 : 1;
  return first < numberOfButtons() ? first : -1;
}

void UIAlertView::show() {
  auto& presenter = drivers().alerts;
  if (!presenter || state_ != State::Hidden) {
    return;
  }
  state_ = State::Visible;
  tappedIndex_.reset();
  const auto told = orSilent(delegate());
  told->willPresentAlertView(*this);
  AlertContent content{title_.value_or(""), message_.value_or(""), buttons_, cancelButtonIndex_};
  if (firstOtherButtonIndex() >= 0 && !told->alertViewShouldEnableFirstOtherButton(*this)) {
    content.disabledButtonIndex = firstOtherButtonIndex();
  }
  const auto self = shared_from_this();
  presenter->present(std::move(content),
                     {.appeared = [self] { orSilent(self->delegate())->didPresentAlertView(*self); },
                      .tapped = [self](long index) { self->tapped(index); },
                      .cancelled = [self] { self->cancelled(); },
                      .gone = [self] { self->gone(); }});
}

void UIAlertView::tapped(long buttonIndex) {
  if (state_ != State::Visible || !buttonTitleAtIndex(buttonIndex)) {
    return;
  }
  state_ = State::Dismissing;
  tappedIndex_ = buttonIndex;
  orSilent(delegate())->alertViewClickedButtonAtIndex(*this, buttonIndex);
  orSilent(delegate())->alertViewWillDismissWithButtonIndex(*this, buttonIndex);
}

void UIAlertView::cancelled() {
  if (state_ != State::Visible) {
    return;
  }
  state_ = State::Dismissing;
  orSilent(delegate())->alertViewCancel(*this);
}

void UIAlertView::gone() {
  state_ = State::Hidden;
  if (tappedIndex_) {
    orSilent(delegate())->alertViewDidDismissWithButtonIndex(*this, *tappedIndex_);
  }
}

void UIAlertView::willPresentAlertView(UIAlertView& alert) {
  orSilent(categoryMethods_)->willPresentAlertView(alert);
}

void UIAlertView::didPresentAlertView(UIAlertView& alert) {
  orSilent(categoryMethods_)->didPresentAlertView(alert);
}

void UIAlertView::alertViewCancel(UIAlertView& alert) { orSilent(categoryMethods_)->alertViewCancel(alert); }

void UIAlertView::alertViewClickedButtonAtIndex(UIAlertView& alert, long buttonIndex) {
  orSilent(categoryMethods_)->alertViewClickedButtonAtIndex(alert, buttonIndex);
}

void UIAlertView::alertViewWillDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) {
  orSilent(categoryMethods_)->alertViewWillDismissWithButtonIndex(alert, buttonIndex);
}

void UIAlertView::alertViewDidDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) {
  orSilent(categoryMethods_)->alertViewDidDismissWithButtonIndex(alert, buttonIndex);
}

bool UIAlertView::alertViewShouldEnableFirstOtherButton(UIAlertView& alert) {
  return orSilent(categoryMethods_)->alertViewShouldEnableFirstOtherButton(alert);
}

}  // namespace nivlo
