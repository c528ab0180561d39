#include <gtest/gtest.h>

#include "bundle/UIAlertView+Blocks/UIAlertView+Blocks.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/fakes/RecordingAlertDelegate.hpp"

namespace nivlo {
namespace {

using Strings = std::vector<std::string>;

class AlertBlocks : public testing::Test {
 protected:
  auto block(const char* what) {
    return [this, what](UIAlertView&) { told.push_back(what); };
  }
  auto tapped(const char* what) {
    return [this, what](UIAlertView&, long index) { told.push_back(what + std::to_string(index)); };
  }
  Strings toldOf(long tap) {
    told.clear();
    alert->alertViewClickedButtonAtIndex(*alert, tap);
    return told;
  }

  FakeMachine machine;
  Strings told;
  std::shared_ptr<RecordingAlertDelegate> first = std::make_shared<RecordingAlertDelegate>(told, "D");
  std::shared_ptr<RecordingAlertDelegate> second = std::make_shared<RecordingAlertDelegate>(told, "E");
  std::shared_ptr<UIAlertView> alert = UIAlertView::initWithTitle("T", "M", first, "No", {"Yes"});
};

TEST_F(AlertBlocks, NumberTheCancelButtonFirst) {
  long index = -1;
  const auto keep = [&](UIAlertView& shown, long tap) {
    index = tap;
    EXPECT_EQ(shown.alertViewStyle(), UIAlertViewStyle::Default);
  };
  showWithTitle("T", "M", "No", {"A", "B"}, keep);
  EXPECT_EQ(machine.alerts.shown[0].buttons, (Strings{"No", "A", "B"}));
  EXPECT_EQ(machine.alerts.shown[0].cancelButtonIndex, 0);
  machine.alerts.tapTop(2);
  EXPECT_EQ(index, 2);
  showWithTitle({}, {}, UIAlertViewStyle::Default, {}, {"A", "B"}, keep);
  EXPECT_EQ(machine.alerts.shown[0].buttons, (Strings{"A", "B"}));
  EXPECT_EQ(machine.alerts.shown[0].cancelButtonIndex, -1);
  machine.alerts.tapTop(0);
  EXPECT_EQ(index, 0);
}

TEST_F(AlertBlocks, RunBeforeTheDelegateThatWasThere) {
  setTapBlock(*alert, tapped("tap "));
  setWillDismissBlock(*alert, tapped("will dismiss "));
  setDidDismissBlock(*alert, tapped("did dismiss "));
  setWillPresentBlock(*alert, block("will present"));
  setDidPresentBlock(*alert, block("did present"));
  setCancelBlock(*alert, block("cancel"));
  alert->show();
  machine.alerts.tapTop(1);
  EXPECT_EQ(told,
            (Strings{"will present", "D will present", "did present", "D did present", "tap 1", "D tap 1",
                     "will dismiss 1", "D will dismiss 1", "did dismiss 1", "D did dismiss 1"}));
  told.clear();
  alert->alertViewCancel(*alert);
  EXPECT_EQ(told, (Strings{"cancel", "D cancel"}));
  tapBlock (*alert)(*alert, 7);
  EXPECT_EQ(told.back(), "tap 7");
  setTapBlock(*alert, nullptr);
  EXPECT_FALSE(tapBlock(*alert));
  EXPECT_EQ(alert->delegate(), alert);
  EXPECT_EQ(toldOf(0), Strings{"D tap 0"});
  first.reset();
  EXPECT_EQ(toldOf(0), Strings{}) << "a delegate that has gone is skipped";
}

TEST_F(AlertBlocks, GiveWayToALaterDelegateUntilTheNextOneIsSet) {
  setTapBlock(*alert, [this](UIAlertView&, long) {
    told.push_back("tap");
    alert->setDelegate(second);
  });
  alert->show();
  machine.alerts.tapTop(1);
  EXPECT_EQ(told, (Strings{"D will present", "D did present", "tap", "D tap 1", "E will dismiss 1",
                           "E did dismiss 1"}));
  setTapBlock(*alert, tapped("tap "));
  EXPECT_EQ(toldOf(0), (Strings{"tap 0", "E tap 0"}));
}

TEST_F(AlertBlocks, DecideBeforeTheDelegateWhetherTheFirstButtonWorks) {
  const auto disabled = [this] {
    alert->show();
    const long index = machine.alerts.shown.back().disabledButtonIndex;
    machine.alerts.cancelAll();
    return index;
  };
  setShouldEnableFirstOtherButtonBlock(*alert, [](UIAlertView&) { return true; });
  EXPECT_EQ(disabled(), -1);
  setShouldEnableFirstOtherButtonBlock(*alert, nullptr);
  EXPECT_EQ(disabled(), 1) << "the delegate's answer";
  first.reset();
  EXPECT_EQ(disabled(), -1);
  setShouldEnableFirstOtherButtonBlock(*alert, [](UIAlertView&) { return false; });
  EXPECT_EQ(disabled(), 1);
}

}  // namespace
}  // namespace nivlo
