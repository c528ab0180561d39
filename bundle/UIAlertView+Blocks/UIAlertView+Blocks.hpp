// Closures that are called for what happens to an alert.
//
// Storing a closure, even a null one, makes the alert its own delegate. The delegate that it had before is
// still told everything, after the closure. It is not kept alive. Main thread only, except that closures may
// be read on any thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/UIKit/UIAlertView.hpp"

namespace nivlo {

/// Is called for a notification without a button.
using UIAlertViewBlock = std::function<void(UIAlertView&)>;
/// Is called for a notification about a button.
using UIAlertViewCompletionBlock = std::function<void(UIAlertView&, long buttonIndex)>;
/// Answers a question about the alert.
using UIAlertViewQueryBlock = std::function<bool(UIAlertView&)>;

/// Makes an alert and shows it. The cancel button, if there is one, has index 0, and the others follow in
/// order. `tapBlock` may be null.
void showWithTitle(const UIAlertView::Text& title, const UIAlertView::Text& message, UIAlertViewStyle style,
                   const UIAlertView::Text& cancelButtonTitle,
                   const std::vector<std::string>& otherButtonTitles,
                   const UIAlertViewCompletionBlock& tapBlock);

/// The same with the default style.
void showWithTitle(const UIAlertView::Text& title, const UIAlertView::Text& message,
                   const UIAlertView::Text& cancelButtonTitle,
                   const std::vector<std::string>& otherButtonTitles,
                   const UIAlertViewCompletionBlock& tapBlock);

// The getters return null while no closure is stored; a null closure removes the one that is stored.

/// Called when a button was tapped, the cancel button included.
UIAlertViewCompletionBlock tapBlock(const UIAlertView& alert);
void setTapBlock(UIAlertView& alert, UIAlertViewCompletionBlock block);

/// Called after the tap, before the alert leaves the screen.
UIAlertViewCompletionBlock willDismissBlock(const UIAlertView& alert);
void setWillDismissBlock(UIAlertView& alert, UIAlertViewCompletionBlock block);

/// Called when the tapped alert has left the screen.
UIAlertViewCompletionBlock didDismissBlock(const UIAlertView& alert);
void setDidDismissBlock(UIAlertView& alert, UIAlertViewCompletionBlock block);

/// Called before the alert appears.
UIAlertViewBlock willPresentBlock(const UIAlertView& alert);
void setWillPresentBlock(UIAlertView& alert, UIAlertViewBlock block);

/// Called when the alert has appeared.
UIAlertViewBlock didPresentBlock(const UIAlertView& alert);
void setDidPresentBlock(UIAlertView& alert, UIAlertViewBlock block);

/// Called when the system takes the alert away before a button was tapped.
UIAlertViewBlock cancelBlock(const UIAlertView& alert);
void setCancelBlock(UIAlertView& alert, UIAlertViewBlock block);

/// Returns whether the first button other than the cancel button can be pressed. The earlier delegate is
/// asked only when no closure is stored.
UIAlertViewQueryBlock shouldEnableFirstOtherButtonBlock(const UIAlertView& alert);
void setShouldEnableFirstOtherButtonBlock(UIAlertView& alert, UIAlertViewQueryBlock block);

}  // namespace nivlo
