#include <gtest/gtest.h>

#include "platform/AVFoundation/AVCaptureMetadataOutput.hpp"
#include "platform/AVFoundation/AVCaptureSession.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

DecodedCode code(const char* text, const char* type = "org.iso.QRCode") {
  return {type, text, {{0, 0}, {9, 0}, {9, 9}, {0, 9}}};
}

TEST(Sightings, OfACodeAreOneUntilItIsMissedForASecondWithoutAPause) {
  CodeSightings sightings;
  CodeSightings::Time now{1h};
  const auto look = [&](std::chrono::milliseconds after, std::vector<DecodedCode> seen) {
    Texts texts;
    for (const auto& coming : sightings.comingIntoView(std::move(seen), now += after)) {
      texts.push_back(coming.text);
    }
    return texts;
  };
  EXPECT_EQ(look(0ms, {code("b"), code("a"), code("b")}), (Texts{"b", "a"})) << "the order stays";
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(look(100ms, i % 9 == 8 ? std::vector{code("a"), code("b")} : std::vector<DecodedCode>{}),
              Texts{})
        << i;
  }
  EXPECT_EQ(look(100ms, {code("a", "org.gs1.EAN-13")}), Texts{"a"}) << "another type is another code";
  EXPECT_EQ(look(1min, {code("a")}), Texts{}) << "nobody watched";
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(look(100ms, {}), Texts{});
  }
  EXPECT_EQ(look(100ms, {code("a")}), Texts{"a"});
}

/// Work that waits until the test runs it.
struct HeldQueue : DispatchQueue {
  ManualMainQueue work;
  void async(std::function<void()> next) override { work.post(std::move(next)); }
  std::string label() const override { return "held"; }
};

struct Gate : AVCaptureMetadataOutputObjectsDelegate {
  std::atomic<bool> open{true};
  std::vector<Texts> reports;
  void captureOutput(AVCaptureMetadataOutput&, const MetadataObjects& objects,
                     const AVCaptureConnection&) override {
    auto& texts = reports.emplace_back();
    for (const auto& object : objects) {
      texts.push_back(*dynamic_cast<const AVMetadataMachineReadableCodeObject&>(*object).stringValue());
    }
  }
  bool wantsMetadataObjects() const override { return open; }
};

class Reports : public testing::Test {
 protected:
  void SetUp() override {
    session->addInput(
        AVCaptureDeviceInput::initWithDevice(AVCaptureDevice::defaultDeviceWithMediaType(AVMediaTypeVideo)));
    session->addOutput(output);
    output->setMetadataObjectsDelegate(gate, queue);
    output->setMetadataObjectTypes(machine.reader.types);
  }
  bool lookMore(int count) {
    return machine.mainQueue.waitUntil(
        [this, wanted = machine.reader.looks + count] { return machine.reader.looks >= wanted; });
  }
  bool reportComes() {
    const bool came = machine.mainQueue.waitUntil([this] { return queue->work.pending() > 0; });
    if (came) {
      queue->work.drain();
    }
    return came;
  }

  FakeMachine machine;
  std::shared_ptr<HeldQueue> queue = std::make_shared<HeldQueue>();
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  std::shared_ptr<AVCaptureMetadataOutput> output = AVCaptureMetadataOutput::init();
  std::shared_ptr<AVCaptureSession> session = AVCaptureSession::init();
};

TEST_F(Reports, CostNoLookWhileNoneWouldBeTaken) {
  const auto looksOverManyFrames = [this] {
    EXPECT_TRUE(machine.watchFrames(100));
    return machine.reader.looks.exchange(0);
  };
  output->setMetadataObjectTypes({});
  session->startRunning();
  EXPECT_EQ(looksOverManyFrames(), 0) << "no types are asked for";
  gate->open = false;
  output->setMetadataObjectTypes(machine.reader.types);
  EXPECT_EQ(looksOverManyFrames(), 0) << "the gate is closed";
  machine.reader.putInView({code("a")});
  gate->open = true;
  ASSERT_TRUE(machine.mainQueue.waitUntil([&] { return queue->work.pending() == 1; }));
  EXPECT_EQ(machine.reader.looks.exchange(0), 1);
  EXPECT_EQ(looksOverManyFrames(), 0) << "a report is on its way";
  queue->work.drain();
  EXPECT_TRUE(lookMore(1));
  output->setMetadataObjectsDelegate(nullptr, queue);
  gate.reset();
  session->stopRunning();
  machine.reader.looks = 0;
  session->startRunning();
  EXPECT_EQ(looksOverManyFrames(), 0) << "nobody is left to tell";
}

TEST_F(Reports, HoldWhatIsAskedForAndAreNotLostWhenTheGateClosesOnTheirWay) {
  machine.reader.putInView({code("ignored", "org.example.Unasked"), code("a")});
  session->startRunning();
  ASSERT_TRUE(machine.mainQueue.waitUntil([this] { return queue->work.pending() == 1; }));
  gate->open = false;
  queue->work.drain();
  EXPECT_TRUE(gate->reports.empty());
  gate->open = true;
  ASSERT_TRUE(reportComes());
  EXPECT_EQ(gate->reports, std::vector<Texts>{{"a"}});
}

}  // namespace
}  // namespace nivlo
