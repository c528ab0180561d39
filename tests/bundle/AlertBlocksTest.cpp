#include <gtest/gtest.h>

#include "bundle/UIAlertView+Blocks/UIAlertView+Blocks.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/fakes/RecordingAlertDelegate.hpp"

namespace nivlo {
namespace {

using Strings = std::vector<std::string>;

TEST(AlertBlocks, RunAfterTheEarlierDelegateOrReplaceIt) {
  FakeMachine machine;
  Strings told;
  const auto block = [&told](const char* what) {
    return [&told, what](UIAlertView&) { told.push_back(what); };
  };
  const auto tapped = [&told](const char* what) {
    return [&told, what](UIAlertView&, long index) { told.push_back(what + std::to_string(index)); };
  };
  auto delegate = std::make_shared<RecordingAlertDelegate>(told, "D");
  const auto alert = UIAlertView::initWithTitle("T", "M", delegate, "No", {"Yes"});
  setTapBlock(*alert, tapped("tap "));
  setWillDismissBlock(*alert, tapped("will dismiss "));
  setDidDismissBlock(*alert, tapped("did dismiss "));
  setWillPresentBlock(*alert, block("will present"));
  setDidPresentBlock(*alert, block("did present"));
  setCancelBlock(*alert, block("cancel"));
  setShouldEnableFirstOtherButtonBlock(*alert, [](UIAlertView&) { return true; });
  alert->show();
  EXPECT_EQ(machine.alerts.shown.at(0).disabledButtonIndex, -1)
      << "the delegate was asked, which disables it";
  machine.alerts.tapTop(1);
  EXPECT_EQ(told,
            (Strings{"will present", "D will present", "did present", "D did present", "tap 1", "D tap 1",
                     "will dismiss 1", "D will dismiss 1", "did dismiss 1", "D did dismiss 1"}));
  told.clear();
  alert->show();
  machine.alerts.cancelAll();
  EXPECT_EQ(told, (Strings{"will present", "D will present", "did present", "D did present", "cancel",
                           "D cancel"}));
  setTapBlock(*alert, nullptr);
  delegate.reset();
  told.clear();
  alert->alertViewClickedButtonAtIndex(*alert, 0);
  EXPECT_EQ(told, Strings{}) << "a delegate was called that is gone";
}

}  // namespace
}  // namespace nivlo
