// Alerts and their answers in a terminal.
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "host/alerts/TerminalAlerts.hpp"
#include "linux/handles/Descriptor.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/support/LoopUntil.hpp"

namespace nivlo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class TerminalAlertsTest : public testing::Test {
 protected:
  TerminalAlertsTest() {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    input_ = Descriptor(ends[0]);
    keyboard_ = Descriptor(ends[1]);
    alerts_ = makeTerminalAlerts(out_, input_.get());
  }

  void present(const std::string& title, AlertContent content) {
    content.title = title;
    const auto note = [this, title](const std::string& event) { events_.push_back(title + ' ' + event); };
    alerts_->present(std::move(content),
                     {.appeared = [] {},
                      .tapped = [note](long button) { note("tapped " + std::to_string(button)); },
                      .cancelled = [note] { note("cancelled"); },
                      .gone = [this] { ++gone_; }});
    machine_.mainQueue.drain();
  }
  void type(std::string_view text) {
    EXPECT_EQ(write(keyboard_.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void endInput() { keyboard_ = Descriptor(); }
  bool waitUntilGone(int count) {
    return loopUntil([&] { return gone_ >= count; });
  }

  FakeMachine machine_;
  std::ostringstream out_;
  Descriptor input_, keyboard_;
  std::unique_ptr<AlertPresenter> alerts_;
  std::vector<std::string> events_;
  int gone_ = 0;
};

TEST_F(TerminalAlertsTest, TheEndOfTheInputAnswersEachAlertAsEscapeDoes) {
  present("open", {.buttons = {"Copy", "Cancel"}, .cancelButtonIndex = 1});
  endInput();
  ASSERT_TRUE(waitUntilGone(1));
  present("notice", {.buttons = {"First", "Last"}});
  present("later", {.buttons = {"Cancel", "Copy"}, .cancelButtonIndex = 0});
  ASSERT_TRUE(waitUntilGone(3));
  present("disabled", {.buttons = {"Cancel"}, .cancelButtonIndex = 0, .disabledButtonIndex = 0});
  ASSERT_TRUE(waitUntilGone(4));
  EXPECT_THAT(events_,
              ElementsAre("open tapped 1", "later tapped 0", "notice tapped 1", "disabled cancelled"));
}

TEST_F(TerminalAlertsTest, TheLastLineNeedsNoLineBreak) {
  type("1");
  endInput();
  present("first", {.buttons = {"Cancel", "Copy"}, .cancelButtonIndex = 0});
  ASSERT_TRUE(waitUntilGone(1));
  present("second", {.buttons = {"Cancel", "Copy"}, .cancelButtonIndex = 0});
  ASSERT_TRUE(waitUntilGone(2));
  EXPECT_THAT(events_, ElementsAre("first tapped 1", "second tapped 0"));
}

TEST_F(TerminalAlertsTest, AnAlertWithoutButtonsIsClosedByAnyLine) {
  present("below", {.buttons = {"OK"}});
  present("bare", {});
  type("\n0\n");
  ASSERT_TRUE(waitUntilGone(2));
  EXPECT_THAT(events_, ElementsAre("bare cancelled", "below tapped 0"));
  EXPECT_THAT(out_.str(), Not(HasSubstr("-1")));
  present("bare", {});
  endInput();
  EXPECT_TRUE(waitUntilGone(3));
}

}  // namespace

}  // namespace nivlo::test
