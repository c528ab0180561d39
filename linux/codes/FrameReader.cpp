#include "linux/codes/FrameReader.hpp"

#include <iterator>
#include <utility>

namespace nivlo {

using std::chrono::steady_clock;

std::vector<DecodedCode> FrameReader::read(const LumaPicture& picture, steady_clock::time_point captureTime) {
  const std::size_t next = next_;
  next_ = (next + 1) % schedule_.strategies.size();
  std::vector<Reading> found = schedule_.strategies[next]->read(picture);
  const bool incomplete = !found.empty() && next != schedule_.mostComplete;
  found = confirmation_.confirmed(withoutDuplicates(std::move(found)), {next, captureTime});
  if (incomplete) complete(found, picture, captureTime);
  sortPointedAtLast(found, picture.width, picture.height);
  std::vector<DecodedCode> codes;
  for (Reading& reading : found) {
    codes.push_back(
        {std::move(reading.type), std::move(reading.text), {reading.outline.begin(), reading.outline.end()}});
  }
  return codes;
}

/// Which of the codes in view is pointed at shows only when all of them are known, so a look that finds one
/// looks for the others as well.
void FrameReader::complete(std::vector<Reading>& found, const LumaPicture& picture,
                           steady_clock::time_point captureTime) {
  std::vector<Reading> more = withoutDuplicates(schedule_.strategies[schedule_.mostComplete]->read(picture));
  more = confirmation_.confirmed(std::move(more), {schedule_.mostComplete, captureTime});
  found.insert(found.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
  found = withoutDuplicates(std::move(found));
}

}  // namespace nivlo
