#include "linux/sound/GStreamerSound.hpp"

#include <utility>

#include "linux/sound/GStreamerPlayback.hpp"

namespace nivlo {

namespace {

class GStreamerSound : public SoundDriver {
 public:
  explicit GStreamerSound(std::chrono::milliseconds grace) : grace_(grace) {}

  std::unique_ptr<SoundPlayback> play(const std::filesystem::path& file,
                                      std::function<void()> completed) override {
    if (!common_) {
      common_ = std::make_shared<PlaybacksInCommon>();
    }
    return std::make_unique<GStreamerPlayback>(file, std::move(completed), grace_, common_);
  }

 private:
  std::chrono::milliseconds grace_;
  std::shared_ptr<PlaybacksInCommon> common_;
};

}  // namespace

std::unique_ptr<SoundDriver> makeGStreamerSound(std::chrono::milliseconds grace) {
  return std::make_unique<GStreamerSound>(grace);
}

}  // namespace nivlo
