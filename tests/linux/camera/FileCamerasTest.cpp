// Pictures and films in place of cameras.
#include <fstream>
#include <iterator>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gst/gst.h>

#include "linux/camera/ImageFile.hpp"
#include "linux/camera/files/FileCameras.hpp"
#include "linux/handles/Owned.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Le;
using testing::SizeIs;

/// Keeps every frame, so that no two of them can share memory.
class Recorder {
 public:
  CameraFrameHandler handler() {
    return [this](VideoFramePtr frame) {
      const std::lock_guard lock(mutex_);
      frames_.push_back(std::move(frame));
    };
  }
  std::vector<VideoFramePtr> frames() const {
    const std::lock_guard lock(mutex_);
    return frames_;
  }
  bool awaits(std::size_t count) const {
    return test::waitFor([&] { return frames().size() >= count; });
  }

 private:
  mutable std::mutex mutex_;
  std::vector<VideoFramePtr> frames_;
};

constexpr auto back = AVCaptureDevicePosition::Back;

class FileCamera : public testing::Test {
 protected:
  std::filesystem::path file(const std::string& name) const { return directory_.path() / name; }

  std::filesystem::path writePicture(int width, int height) const {
    std::vector<std::uint8_t> pixels;
    for (int i = 0; i < width * height; ++i) {
      pixels.insert(pixels.end(), {40, 60, 220, 0});
    }
    EXPECT_EQ(writePNG(file("picture.png"), pixels.data(), width, height, width * 4), "");
    return file("picture.png");
  }

  /// Writes what the GStreamer pipeline produces to a file.
  std::filesystem::path writeFilm(const std::string& name, const std::string& pipelineDescription) const {
    gst_init(nullptr, nullptr);
    const std::string whole = pipelineDescription + " ! filesink location=" + file(name).string();
    const Owned<GstElement, gst_object_unref> pipeline(gst_parse_launch(whole.c_str(), nullptr));
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    const Owned<GstBus, gst_object_unref> bus(gst_element_get_bus(pipeline.get()));
    const auto ends = static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR);
    const Owned<GstMessage, gst_message_unref> message(
        gst_bus_timed_pop_filtered(bus.get(), 20 * GST_SECOND, ends));
    EXPECT_TRUE(message && GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS) << whole;
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    return file(name);
  }

 private:
  test::TemporaryDirectory directory_;
};

TEST_F(FileCamera, APictureIsRepeatedInItsColoursAndScaledDownToACamerasSize) {
  const auto driver = makeFileCamera(writePicture(33, 17), back, nullptr);
  ASSERT_NE(driver, nullptr);
  const auto info = driver->cameras().at(0);
  EXPECT_EQ(info.uniqueID, "file:" + file("picture.png").string());
  EXPECT_EQ(info.localizedName, "picture.png");
  EXPECT_EQ(driver->open("file:other", [](auto) {}), nullptr);
  Recorder recorder;
  auto stream = driver->open(info.uniqueID, recorder.handler());
  ASSERT_TRUE(recorder.awaits(3));
  stream.reset();
  const auto frames = recorder.frames();
  EXPECT_LT(frames[0]->captureTime, frames[2]->captureTime);
  ASSERT_EQ(frames[2]->format, PixelFormat::I420);
  EXPECT_EQ(frames[2]->width, 33);
  // R 220, G 60, B 40 in full-range BT.601.
  EXPECT_NEAR(frames[2]->planes[0].data[16 * frames[2]->planes[0].stride + 32], 106, 2);
  EXPECT_NEAR(frames[2]->planes[1].data[0], 91, 2);
  EXPECT_NEAR(frames[2]->planes[2].data[0], 209, 2);

  Recorder scaled;
  stream = makeFileCamera(writePicture(8000, 10), back, nullptr)->open(info.uniqueID, scaled.handler());
  ASSERT_TRUE(scaled.awaits(1));
  EXPECT_THAT(scaled.frames()[0]->width, Le(4096));
  EXPECT_THAT(scaled.frames()[0]->height, AllOf(testing::Ge(4), Le(5)));
}

TEST_F(FileCamera, AFilmStartsOverAtItsEndAndKeepsItsPace) {
  constexpr std::size_t length = 10;
  const std::string source =
      "videotestsrc num-buffers=10 pattern=ball ! video/x-raw,width=64,height=48,framerate=20/1 ! ";
  for (const auto& [name, coding] :
       {std::pair{"film.mkv", "jpegenc ! matroskamux"}, {"film.ogv", "theoraenc ! oggmux"}}) {
    std::string error;
    const auto driver = makeFileCamera(writeFilm(name, source + coding), back, &error);
    ASSERT_NE(driver, nullptr) << error;
    Recorder recorder;
    const auto begin = std::chrono::steady_clock::now();
    auto stream = driver->open(driver->cameras()[0].uniqueID, recorder.handler());
    ASSERT_TRUE(recorder.awaits(length * 5 / 2)) << name;
    EXPECT_GT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1)) << name;
    stream.reset();
    const auto frames = recorder.frames();
    EXPECT_EQ(frames[0]->width, 64);
    std::set<std::string> pictures;
    for (const auto& frame : frames) {
      pictures.emplace(reinterpret_cast<const char*>(frame->planes[0].data),
                       frame->planes[0].stride * frame->height);
    }
    EXPECT_THAT(pictures, SizeIs(AllOf(testing::Gt(length / 2), Le(length)))) << name;
  }
}

/// Marks the film's track as to be turned by 90 degrees clockwise, as a phone that is held upright does.
void turnTrack(const std::filesystem::path& mp4) {
  std::fstream file(mp4, std::ios::in | std::ios::out | std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  constexpr int headerToMatrix = 44;
  const std::string matrix("\0\0\0\0\0\1\0\0\0\0\0\0\xFF\xFF\0\0\0\0\0\0\0\0\0\0", 24);
  file.clear();
  file.seekp(static_cast<std::streamoff>(bytes.find("tkhd") + headerToMatrix));
  file << matrix;
}

TEST_F(FileCamera, TheColorimetryAndRotationOfAFilmReachItsFrames) {
  const auto film = writeFilm("held.mp4",
                              "videotestsrc num-buffers=4 ! "
                              "video/x-raw,width=64,height=48,framerate=20/1 ! jpegenc ! qtmux");
  turnTrack(film);
  std::string error;
  const auto driver = makeFileCamera(film, back, &error);
  ASSERT_NE(driver, nullptr) << error;
  Recorder recorder;
  const auto stream = driver->open(driver->cameras()[0].uniqueID, recorder.handler());
  ASSERT_TRUE(recorder.awaits(1));
  const auto frame = recorder.frames()[0];
  EXPECT_EQ(frame->rotation, 270);
  EXPECT_EQ(frame->matrix, ColorMatrix::BT601);
  EXPECT_EQ(frame->range, ColorRange::Full);
}

TEST_F(FileCamera, AFileThatIsNeitherPictureNorFilmIsRefusedWithTheCause) {
  const auto refusal = [](const std::filesystem::path& path) {
    std::string error;
    EXPECT_EQ(makeFileCamera(path, back, &error), nullptr) << path;
    return error;
  };
  std::ofstream(file("text.mp4")) << "not a film at all\n";
  EXPECT_THAT(refusal(file("text.mp4")), AllOf(HasSubstr("text.mp4"), HasSubstr("plugins")));
  EXPECT_THAT(refusal(writeFilm("sound.ogg", "audiotestsrc num-buffers=20 ! vorbisenc ! oggmux")),
              HasSubstr("sound.ogg"));
  std::filesystem::resize_file(writePicture(64, 64), 100);
  EXPECT_THAT(refusal(file("picture.png")), HasSubstr("cannot read the picture"));
}

}  // namespace
}  // namespace nivlo
