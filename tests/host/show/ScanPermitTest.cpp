// When codes may be looked for, whatever the wallpaper thinks.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "host/show/ScanPermit.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo::test {

namespace {

class ScanPermitTest : public testing::Test {
 protected:
  void present(std::vector<std::string> buttons) {
    alerts_->present({.buttons = std::move(buttons)}, {.appeared = [] {},
                                                       .tapped = [this](long) { seen_ = mayLook(); },
                                                       .cancelled = [this] { seen_ = mayLook(); },
                                                       .gone = [] {}});
  }
  bool mayLook() const { return reader_->mayLook(); }

  const std::shared_ptr<ScanPermit> permit_ = std::make_shared<ScanPermit>();
  const std::unique_ptr<CodeReaderDriver> readers_ = ruledBy(permit_, std::make_unique<FakeCodeReader>());
  const std::unique_ptr<CodeReader> reader_ = readers_->makeReader();
  FakeAlerts* fake_ = nullptr;
  const std::unique_ptr<AlertPresenter> alerts_ = [this] {
    auto fake = std::make_unique<FakeAlerts>();
    fake_ = fake.get();
    return withholding(permit_, std::move(fake));
  }();
  bool seen_ = false;  // whether it was permitted when the alert's owner was told of the answer
};

TEST_F(ScanPermitTest, AnAnswerDoesNotTurnScanningOnAgain) {
  EXPECT_TRUE(mayLook());
  present({"Cancel", "Copy"});
  EXPECT_FALSE(mayLook());
  permit_->setScanning(false);
  fake_->tapTop(0);
  EXPECT_FALSE(seen_ || mayLook());
  permit_->setScanning(true);
  EXPECT_TRUE(mayLook());
}

TEST_F(ScanPermitTest, ItIsWithheldWhileAnyQuestionIsOpenAndNotForNotices) {
  present({"Cancel", "Copy"});
  present({"Cancel", "Open Link"});
  fake_->tapTop(1);
  EXPECT_FALSE(seen_ || mayLook()) << "one is still open";
  fake_->cancelAll();
  EXPECT_TRUE(seen_ && mayLook());
  present({"I Know"});
  EXPECT_TRUE(mayLook()) << "nothing is asked";
}

}  // namespace

}  // namespace nivlo::test
