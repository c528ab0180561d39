#include "platform/UIKit/UIAlertView.hpp"

#include <utility>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

/// The delegate, or one with the interface's own answers where there is none.
std::shared_ptr<UIAlertViewDelegate> orNobody(std::shared_ptr<UIAlertViewDelegate> delegate) {
  static const auto nobody = std::make_shared<UIAlertViewDelegate>();
  if (!delegate) {
    delegate = nobody;
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
  const auto told = orNobody(delegate());
  told->willPresentAlertView(*this);
  AlertContent content{title_.value_or(""), message_.value_or(""), buttons_, cancelButtonIndex_};
  if (firstOtherButtonIndex() >= 0 && !told->alertViewShouldEnableFirstOtherButton(*this)) {
    content.disabledButtonIndex = firstOtherButtonIndex();
  }
  const auto self = shared_from_this();
  presenter->present(std::move(content),
                     {.appeared = [self] { orNobody(self->delegate())->didPresentAlertView(*self); },
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
  orNobody(delegate())->alertViewClickedButtonAtIndex(*this, buttonIndex);
  orNobody(delegate())->alertViewWillDismissWithButtonIndex(*this, buttonIndex);
}

void UIAlertView::cancelled() {
  if (state_ != State::Visible) {
    return;
  }
  state_ = State::Dismissing;
  orNobody(delegate())->alertViewCancel(*this);
}

void UIAlertView::gone() {
  state_ = State::Hidden;
  if (tappedIndex_) {
    orNobody(delegate())->alertViewDidDismissWithButtonIndex(*this, *tappedIndex_);
  }
}

void UIAlertView::willPresentAlertView(UIAlertView& alert) {
  orNobody(categoryMethods_)->willPresentAlertView(alert);
}

void UIAlertView::didPresentAlertView(UIAlertView& alert) {
  orNobody(categoryMethods_)->didPresentAlertView(alert);
}

void UIAlertView::alertViewCancel(UIAlertView& alert) { orNobody(categoryMethods_)->alertViewCancel(alert); }

void UIAlertView::alertViewClickedButtonAtIndex(UIAlertView& alert, long buttonIndex) {
  orNobody(categoryMethods_)->alertViewClickedButtonAtIndex(alert, buttonIndex);
}

void UIAlertView::alertViewWillDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) {
  orNobody(categoryMethods_)->alertViewWillDismissWithButtonIndex(alert, buttonIndex);
}

void UIAlertView::alertViewDidDismissWithButtonIndex(UIAlertView& alert, long buttonIndex) {
  orNobody(categoryMethods_)->alertViewDidDismissWithButtonIndex(alert, buttonIndex);
}

bool UIAlertView::alertViewShouldEnableFirstOtherButton(UIAlertView& alert) {
  return orNobody(categoryMethods_)->alertViewShouldEnableFirstOtherButton(alert);
}

}  // namespace nivlo
