// Closures for what happens to an alert.
//
// An alert with a closure is its own delegate; the delegate that it had before is told everything too, after
// the closure. All of this is for the main thread, except that a closure may be read or stored on any.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/UIKit/UIAlertView.hpp"

namespace nivlo {

using UIAlertViewBlock = std::function<void(UIAlertView&)>;
using UIAlertViewCompletionBlock = std::function<void(UIAlertView&, long buttonIndex)>;
using UIAlertViewQueryBlock = std::function<bool(UIAlertView&)>;

/// Builds an alert and shows it. The cancel button, where there is one, has index 0; the others follow in
/// order. Without a tap closure the alert has no delegate at all.
void showWithTitle(const UIAlertView::Text& title, const UIAlertView::Text& message, UIAlertViewStyle style,
                   const UIAlertView::Text& cancelButtonTitle,
                   const std::vector<std::string>& otherButtonTitles,
                   const UIAlertViewCompletionBlock& tapBlock);

/// The same in the default style.
void showWithTitle(const UIAlertView::Text& title, const UIAlertView::Text& message,
                   const UIAlertView::Text& cancelButtonTitle,
                   const std::vector<std::string>& otherButtonTitles,
                   const UIAlertViewCompletionBlock& tapBlock);

/// A button was tapped, the cancel button included.
UIAlertViewCompletionBlock tapBlock(const UIAlertView& alert);
void setTapBlock(UIAlertView& alert, UIAlertViewCompletionBlock block);

UIAlertViewCompletionBlock willDismissBlock(const UIAlertView& alert);
void setWillDismissBlock(UIAlertView& alert, UIAlertViewCompletionBlock block);

UIAlertViewCompletionBlock didDismissBlock(const UIAlertView& alert);
void setDidDismissBlock(UIAlertView& alert, UIAlertViewCompletionBlock block);

UIAlertViewBlock willPresentBlock(const UIAlertView& alert);
void setWillPresentBlock(UIAlertView& alert, UIAlertViewBlock block);

UIAlertViewBlock didPresentBlock(const UIAlertView& alert);
void setDidPresentBlock(UIAlertView& alert, UIAlertViewBlock block);

/// The system took the alert away; nobody pressed a button.
UIAlertViewBlock cancelBlock(const UIAlertView& alert);
void setCancelBlock(UIAlertView& alert, UIAlertViewBlock block);

/// Its answer is the one that counts; the earlier delegate is asked only where there is no closure.
UIAlertViewQueryBlock shouldEnableFirstOtherButtonBlock(const UIAlertView& alert);
void setShouldEnableFirstOtherButtonBlock(UIAlertView& alert, UIAlertViewQueryBlock block);

}  // namespace nivlo
