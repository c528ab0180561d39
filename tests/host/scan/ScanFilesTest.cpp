#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <zint.h>

#include "host/scan/ScanFiles.hpp"
#include "linux/camera/ImageFile.hpp"
#include "tests/linux/codes/CodePictures.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Scan : public testing::Test {
 protected:
  std::filesystem::path picture(const std::string& name, const GreyPicture& content) {
    const VideoFrame frame = frameOf(content, PixelFormat::BGRx);
    const auto path = directory_.path() / name;
    EXPECT_EQ(writePNG(path, frame.planes[0].data, frame.width, frame.height, frame.planes[0].stride), "");
    return path;
  }

  int run(std::vector<std::filesystem::path> files, bool json = false) {
    out_.str("");
    err_.str("");
    return scanFiles({std::move(files), json}, out_, err_);
  }

  std::vector<nlohmann::json> objects() {
    std::vector<nlohmann::json> parsed;
    std::istringstream lines(out_.str());
    for (std::string line; std::getline(lines, line);) {
      parsed.push_back(nlohmann::json::parse(line));
    }
    return parsed;
  }

  TemporaryDirectory directory_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(Scan, WritesOneLinePerCodeThatCannotAttackATerminal) {
  const auto nasty = picture("nasty.png", drawCode(BARCODE_QRCODE, "a\nb\x1b[2J\u202e"));
  const auto blank = picture("blank.png", greyPicture(320, 240));
  EXPECT_EQ(run({nasty}), 0);
  EXPECT_EQ(out_.str(), "org.iso.QRCode: a\\nb\\x1b[2J\\u202e\n");
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(run({nasty, blank}), 0);
  EXPECT_EQ(out_.str(), nasty.string() + ": org.iso.QRCode: a\\nb\\x1b[2J\\u202e\n");
  EXPECT_EQ(err_.str(), blank.string() + ": no code found\n");
}

TEST_F(Scan, AnUnreadableFileDoesNotStopTheOthers) {
  const auto good = picture("good.png", drawCode(BARCODE_CODE128, "good"));
  const auto bytes = directory_.read(good);
  const auto truncated = directory_.write("truncated.png", bytes.substr(0, bytes.size() / 2));
  const auto text = directory_.write("text.png", "this is not a picture");
  const auto missing = directory_.path() / "missing\x1b.png";
  EXPECT_EQ(run({truncated, text, missing, good}), 1);
  EXPECT_EQ(out_.str(), good.string() + ": org.iso.Code128: good\n");
  for (const char* name : {"truncated.png: ", "text.png: ", "missing\\x1b.png: "}) {
    EXPECT_THAT(err_.str(), HasSubstr(name));
  }
  EXPECT_THAT(err_.str(), testing::Not(HasSubstr("\x1b")));
  EXPECT_THAT(err_.str(), testing::Not(HasSubstr("no code found")));

  EXPECT_EQ(run({missing, good}, true), 1);
  const auto parsed = objects();
  ASSERT_EQ(parsed.size(), 2u);
  EXPECT_NE(parsed[0]["error"], "");
  EXPECT_FALSE(parsed[1].contains("error"));
}

TEST_F(Scan, JSONHoldsEveryCodeOnceWithItsCorners) {
  GreyPicture scene = greyPicture(1280, 720);
  const GreyPicture label = drawCode(BARCODE_EANX, "400638133393");
  place(scene, label, 40, 30);
  place(scene, label, 800, 400);
  place(scene, drawCode(BARCODE_QRCODE, std::string("nul\0", 4)), 900, 20);
  const auto path = picture("label \xff.png", scene);
  EXPECT_EQ(run({path}, true), 0);
  const auto parsed = objects();
  ASSERT_EQ(parsed.size(), 1u);
  EXPECT_THAT(parsed[0]["file"].get<std::string>(), testing::EndsWith("label \ufffd.png"));
  EXPECT_GT(parsed[0]["milliseconds"], 0);
  std::vector<std::string> texts;
  for (const auto& code : parsed[0]["codes"]) {
    texts.push_back(code["text"]);
    ASSERT_EQ(code["corners"].size(), 4u);
    EXPECT_EQ(code["corners"][0].size(), 2u);
    EXPECT_LT(code["corners"][0][0], code["corners"][1][0]);
  }
  EXPECT_THAT(texts,
              testing::UnorderedElementsAre("4006381333931", "4006381333931", std::string("nul\0", 4)));
}

}  // namespace

}  // namespace nivlo::test
