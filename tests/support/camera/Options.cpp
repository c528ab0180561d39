#include "tests/support/camera/Options.hpp"

#include <map>
#include <stdexcept>

namespace nivlo::test {
namespace {

const std::map<std::string, ColorMatrix> kMatrices{{"601", ColorMatrix::BT601}, {"709", ColorMatrix::BT709}};
const std::map<std::string, ColorRange> kRanges{{"limited", ColorRange::Limited}, {"full", ColorRange::Full}};

template <typename T>
T valueOf(const std::map<std::string, T>& values, const std::string& text) {
  const auto found = values.find(text);
  if (found == values.end()) throw std::invalid_argument(text + ": an unknown value");
  return found->second;
}

/// What stands behind each option, until it is taken.
class Arguments {
 public:
  explicit Arguments(const std::vector<std::string>& words) {
    if (words.size() % 2 != 0) throw std::invalid_argument(words.back() + ": an option without a value");
    for (std::size_t i = 0; i < words.size(); i += 2) values_[words[i]] = words[i + 1];
  }
  std::string take(const std::string& option, const std::string& otherwise = {}) {
    const auto found = values_.extract(option);
    return found ? found.mapped() : otherwise;
  }
  void expectAllTaken() const {
    if (!values_.empty()) throw std::invalid_argument(values_.begin()->first + ": an unknown option");
  }

 private:
  std::map<std::string, std::string> values_;
};

}  // namespace

CameraOptions parseOptions(const std::vector<std::string>& arguments) {
  Arguments given(arguments);
  CameraOptions options;
  options.name = given.take("--name");
  options.location = given.take("--location");
  options.rotation = given.take("--rotation");
  options.picture = given.take("--picture");
  options.padding = std::stoi(given.take("--padding", "0"));
  options.buffers = std::stoi(given.take("--buffers", "0"));
  options.modes.push_back(parseMode(given.take("--format", "YUY2") + ":" + given.take("--size", "640x480") +
                                    "@" + given.take("--fps", "30")));
  if (const auto mode = given.take("--also"); !mode.empty()) options.modes.push_back(parseMode(mode));
  if (const auto turn = given.take("--transform"); !turn.empty()) options.transform = std::stoi(turn);
  if (const auto color = given.take("--color"); !color.empty()) options.color = parseColor(color);
  if (const auto matrix = given.take("--matrix"); !matrix.empty()) {
    options.colorimetry.matrix = valueOf(kMatrices, matrix);
  }
  if (const auto range = given.take("--range"); !range.empty()) {
    options.colorimetry.range = valueOf(kRanges, range);
  }
  given.expectAllTaken();
  return options;
}

}  // namespace nivlo::test
