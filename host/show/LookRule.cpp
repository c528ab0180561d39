#include "host/show/LookRule.hpp"

#include <string>
#include <utility>
#include <vector>

namespace nivlo {

namespace {

using Rule = std::shared_ptr<const LookRule>;

class RuledReader : public CodeReader {
 public:
  RuledReader(Rule rule, std::unique_ptr<CodeReader> reader)
      : rule_(std::move(rule)), reader_(std::move(reader)) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override { return reader_->look(frame); }
  bool mayLook() const override { return rule_->mayLook() && reader_->mayLook(); }
  std::chrono::milliseconds lookInterval() const override {
    return rule_->lookInterval(reader_->lookInterval());
  }

 private:
  Rule rule_;
  std::unique_ptr<CodeReader> reader_;
};

class RuledReaders : public CodeReaderDriver {
 public:
  RuledReaders(Rule rule, std::unique_ptr<CodeReaderDriver> readers)
      : rule_(std::move(rule)), readers_(std::move(readers)) {}

  std::vector<std::string> availableTypes() const override { return readers_->availableTypes(); }
  bool canRead() const override { return readers_->canRead(); }
  std::unique_ptr<CodeReader> makeReader() override {
    auto reader = readers_->makeReader();
    return reader ? std::make_unique<RuledReader>(rule_, std::move(reader)) : nullptr;
  }

 private:
  Rule rule_;
  std::unique_ptr<CodeReaderDriver> readers_;
};

}  // namespace

std::unique_ptr<CodeReaderDriver> ruledBy(std::shared_ptr<const LookRule> rule,
                                          std::unique_ptr<CodeReaderDriver> readers) {
  return std::make_unique<RuledReaders>(std::move(rule), std::move(readers));
}

}  // namespace nivlo
