#include <gtest/gtest.h>

#include "platform/UIKit/UIAlertView.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/fakes/RecordingAlertDelegate.hpp"

namespace nivlo {
namespace {

TEST(Alert, TellsItsDelegateOutOfOrderOrTwice) {
  FakeMachine machine;
  std::vector<std::string> told;
  const auto delegate = std::make_shared<RecordingAlertDelegate>(told, "D");
  const auto alert = UIAlertView::initWithTitle("T", {}, delegate, "No", {"Yes"});
  alert->show();
  alert->show();
  ASSERT_EQ(machine.alerts.shown.size(), 1u);
  EXPECT_EQ(machine.alerts.shown[0].disabledButtonIndex, 1);
  const auto screen = machine.alerts.takeTop();
  screen.appeared();
  for (const long index : {2, -1, 1, 0}) {
    screen.tapped(index);
  }
  screen.cancelled();
  EXPECT_TRUE(alert->isVisible());
  screen.gone();
  EXPECT_FALSE(alert->isVisible());
  alert->show();
  machine.alerts.cancelAll();
  EXPECT_EQ(told,
            (std::vector<std::string>{"D will present", "D did present", "D tap 1", "D will dismiss 1",
                                      "D did dismiss 1", "D will present", "D did present", "D cancel"}));
}

}  // namespace
}  // namespace nivlo
