#include <gtest/gtest.h>

#include "platform/UIKit/UIAlertView.hpp"
#include "platform/UIKit/UIView.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/fakes/RecordingAlertDelegate.hpp"

namespace nivlo {
namespace {

TEST(ViewTree, MovesAViewThatItsOldParentAloneHeld) {
  const auto root = UIView::initWithFrame({{0, 0}, {100, 100}});
  const auto other = UIView::initWithFrame({{0, 0}, {50, 50}});
  root->addSubview(UIView::initWithFrame({{1, 2}, {3, 4}}));
  root->addSubview(other);
  other->addSubview(root->subviews().front());
  ASSERT_EQ(other->subviews().size(), 1u);
  EXPECT_EQ(other->subviews().front()->superview(), other);
  EXPECT_EQ(root->subviews(), std::vector{other});
  EXPECT_EQ(root->layer()->sublayers(), std::vector{other->layer()});
  other->subviews().front()->removeFromSuperview();
  EXPECT_TRUE(other->layer()->sublayers().empty());
  root->layer()->addSublayer(root->layer()->sublayers().front());
  EXPECT_EQ(root->layer()->sublayers(), std::vector{other->layer()});
}

TEST(ViewTree, NeverHoldsAViewInsideItself) {
  const auto root = UIView::initWithFrame({{0, 0}, {100, 100}});
  const auto child = UIView::initWithFrame({{0, 0}, {50, 50}});
  root->addSubview(child);
  root->addSubview(root);
  child->addSubview(root);
  child->addSubview(nullptr);
  EXPECT_EQ(child->superview(), root);
  EXPECT_FALSE(root->superview());
  EXPECT_TRUE(child->subviews().empty());
}

TEST(Alert, TellsItsDelegateInOrderAndOnlyOnce) {
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
