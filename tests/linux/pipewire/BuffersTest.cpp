// Buffers become frames, and no sender leads us outside its memory.
#include <algorithm>
#include <atomic>
#include <limits>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <unistd.h>

#include "linux/camera/pipewire/CameraNode.hpp"
#include "linux/camera/pipewire/buffers/BufferReader.hpp"
#include "linux/camera/pipewire/buffers/FrameLayout.hpp"
#include "linux/camera/pipewire/buffers/JpegDecoder.hpp"
#include "linux/handles/Descriptor.hpp"
#include "tests/linux/pipewire/Frames.hpp"
#include "tests/support/pictures/Encoding.hpp"

namespace nivlo {
namespace {

TEST(FrameLayout, ASenderCannotMakeAPlaneReachBeyondItsMemory) {
  const std::vector<std::uint8_t> memory(640 * 480 * 3 / 2);
  const auto fits = [&](PixelFormat format, int width, int height, std::size_t bytes, int stride) {
    const DataBlock block{std::span(memory).first(bytes), stride};
    return layPlanes(format, width, height, {&block, 1}).has_value();
  };
  EXPECT_TRUE(fits(PixelFormat::NV12, 640, 480, memory.size(), 640));
  EXPECT_TRUE(fits(PixelFormat::NV12, 640, 480, memory.size(), 0));
  EXPECT_FALSE(fits(PixelFormat::NV12, 640, 480, memory.size() - 1, 640));
  EXPECT_FALSE(fits(PixelFormat::NV12, 640, 480, memory.size(), 641));
  EXPECT_FALSE(fits(PixelFormat::I420, 640, 480, memory.size(), 639));
  EXPECT_FALSE(fits(PixelFormat::I420, 640, 480, memory.size(), std::numeric_limits<int>::max()));
  EXPECT_FALSE(fits(PixelFormat::I420, 8192, 8192, memory.size(), 8192));
  EXPECT_FALSE(fits(PixelFormat::I420, 639, 480, memory.size(), 639))
      << "half of this stride is too short for a chroma row";
  EXPECT_FALSE(fits(PixelFormat::YUY2, 3, 1, 7, 0));
  EXPECT_TRUE(fits(PixelFormat::RGB, 3, 2, 12 + 9, 0)) << "the last row needs no padding";
  EXPECT_FALSE(fits(PixelFormat::RGB, 3, 2, 12 + 8, 0));

  const std::array<DataBlock, 3> blocks{DataBlock{std::span(memory).first(16), 4},
                                        DataBlock{std::span(memory).first(8), 4},
                                        DataBlock{std::span(memory).first(1), 0}};
  EXPECT_TRUE(layPlanes(PixelFormat::NV12, 4, 4, std::span(blocks).first(2)));
  EXPECT_FALSE(layPlanes(PixelFormat::NV12, 4, 4, blocks));
  EXPECT_FALSE(layPlanes(PixelFormat::I420, 4, 4, blocks)) << "the third plane is too small";
}

/// A buffer as PipeWire hands it over, with one data block in shared memory.
struct SentBuffer {
  explicit SentBuffer(std::uint32_t size, int seals = F_SEAL_SHRINK | F_SEAL_GROW)
      : file(memfd_create("buffer", MFD_CLOEXEC | MFD_ALLOW_SEALING)) {
    EXPECT_EQ(ftruncate(file.get(), size), 0);
    EXPECT_EQ(fcntl(file.get(), F_ADD_SEALS, seals), 0);
    data.type = SPA_DATA_MemFd;
    data.fd = file.get();
    data.maxsize = size;
  }

  Descriptor file;
  spa_chunk chunk{};
  spa_data data{.chunk = &chunk};
  spa_buffer content{.n_datas = 1, .datas = &data};
  pw_buffer buffer{.buffer = &content};
};

TEST(BufferReader, SkipsPicturesThatLieOutsideTheirBufferOrAreMarkedCorrupt) {
  SentBuffer sent(64);
  BufferLoans loans;
  ASSERT_TRUE(loans.add(&sent.buffer));
  BufferReader reader(0);
  reader.setFormat({.pixels = PixelFormat::RGBx, .width = 4, .height = 4});
  const auto isRead = [&](std::uint32_t offset, std::uint32_t size, std::int32_t stride,
                          std::int32_t flags = 0) {
    sent.chunk = {offset, size, stride, flags};
    return reader.read(BufferLoans::handleOf(sent.buffer), loans).frame != nullptr;
  };
  EXPECT_TRUE(isRead(0, 64, 16));
  EXPECT_FALSE(isRead(1, 64, 16));
  EXPECT_FALSE(isRead(64, 1, 16));
  EXPECT_FALSE(isRead(UINT32_MAX, 65, 16));
  EXPECT_FALSE(isRead(0, UINT32_MAX, 16));
  EXPECT_FALSE(isRead(0, 0, 16));
  EXPECT_FALSE(isRead(0, 64, -16));
  EXPECT_FALSE(isRead(0, 64, 16, SPA_CHUNK_FLAG_CORRUPTED));

  SentBuffer tooSmall(64);
  tooSmall.data.maxsize = 65;
  EXPECT_FALSE(loans.add(&tooSmall.buffer)) << "reading past the end of the file would end the process";
  EXPECT_EQ(reader.read(BufferLoans::handleOf(tooSmall.buffer), loans).frame, nullptr);
}

TEST(BufferReader, MemoryThatIsSmallerThanItSaysOrShrinksUnderWayCostsOnlyItsPictures) {
  BufferLoans loans;
  for (const auto type : {SPA_DATA_MemFd, SPA_DATA_DmaBuf}) {
    SentBuffer small(64);
    small.data.type = type;
    small.data.maxsize = 64 * 4096;
    EXPECT_FALSE(loans.add(&small.buffer)) << type;
  }

  SentBuffer unsealed(4096 * 64, 0);
  const std::uint8_t white = 255;
  ASSERT_EQ(pwrite(unsealed.file.get(), &white, 1, 4096), 1);
  std::array<SentBuffer, 3> others{SentBuffer(1), SentBuffer(1), SentBuffer(1)};
  for (SentBuffer& each : others) {
    ASSERT_TRUE(loans.add(&each.buffer));
  }
  ASSERT_TRUE(loans.add(&unsealed.buffer));
  BufferReader reader(0);
  reader.setFormat({.pixels = PixelFormat::RGBx, .width = 64, .height = 64});
  StreamBuffer& handle = BufferLoans::handleOf(unsealed.buffer);
  unsealed.chunk = {4096, 64 * 64 * 4, 256, 0};
  const VideoFramePtr frame = reader.read(handle, loans).frame;
  ASSERT_TRUE(frame);
  ASSERT_EQ(ftruncate(unsealed.file.get(), 4096), 0);
  EXPECT_EQ(frame->planes[0].data[0], white);
  EXPECT_FALSE(reader.read(handle, loans).frame);
}

TEST(BufferReader, AJpegThatItsCameraChangesDuringDecodingIsNotWrittenBehindItsFrame) {
  const std::vector<std::uint8_t> jpeg =
      test::encodeJpeg(test::quadrantPicture(640, 480), test::JpegChroma::C444);
  const std::array<std::uint8_t, 2> startOfFrame{0xFF, 0xC0};
  const auto marker = std::ranges::search(jpeg, startOfFrame).begin();
  ASSERT_NE(marker, jpeg.end());
  // The marker, the length, the bits of a sample, the size, the number of components, and the first one's ID.
  const auto sampling = marker - jpeg.begin() + 11;
  ASSERT_EQ(jpeg[sampling], 0x11);

  SentBuffer sent(static_cast<std::uint32_t>(jpeg.size()));
  ASSERT_EQ(pwrite(sent.file.get(), jpeg.data(), jpeg.size(), 0), static_cast<ssize_t>(jpeg.size()));
  sent.chunk.size = static_cast<std::uint32_t>(jpeg.size());
  BufferLoans loans;
  ASSERT_TRUE(loans.add(&sent.buffer));
  BufferReader reader(0);
  reader.setFormat({.isJpeg = true, .width = 640, .height = 480});
  std::atomic<int> changes = 0;
  const std::jthread camera([&](const std::stop_token& stop) {
    for (; !stop.stop_requested(); ++changes) {
      const std::uint8_t value = changes % 2 == 0 ? 0x11 : 0x22;
      pwrite(sent.file.get(), &value, 1, sampling);
    }
  });
  for (int i = 0; i < 500; ++i) {
    reader.read(BufferLoans::handleOf(sent.buffer), loans);
  }
  EXPECT_GT(changes, 500);
}

TEST(BufferLoans, ALoanOutlivesItsBufferAndItsStreamAndOnlyBuffersThatAreStillThereAreQueuedAgain) {
  auto loans = std::make_unique<BufferLoans>();
  std::array<SentBuffer, 4> sent{SentBuffer(1), SentBuffer(1), SentBuffer(1), SentBuffer(1)};
  for (SentBuffer& each : sent) {
    ASSERT_TRUE(loans->add(&each.buffer));
  }
  const auto handle = [&](int index) -> StreamBuffer& { return BufferLoans::handleOf(sent[index].buffer); };
  auto ofRemoved = loans->lend(handle(0));
  const auto bytes = handle(0).memory->inPlace(0);
  ASSERT_TRUE(loans->canLend(handle(1)));
  auto ofPresent = loans->lend(handle(1));
  EXPECT_FALSE(loans->canLend(handle(2))) << "the camera needs the last two";

  loans->remove(&sent[0].buffer);
  EXPECT_EQ(bytes[0], 0) << "the frame's memory was unmapped";
  ASSERT_TRUE(loans->add(&sent[0].buffer)) << "another buffer at the address of the removed one";
  ofRemoved.reset();
  EXPECT_THAT(loans->takeReturned(), testing::IsEmpty());
  ofPresent.reset();
  EXPECT_THAT(loans->takeReturned(), testing::ElementsAre(&sent[1].buffer));

  auto ofClosedStream = loans->lend(handle(2));
  const auto last = handle(2).memory->inPlace(0);
  loans.reset();
  EXPECT_EQ(last[0], 0);
}

TEST(JpegDecoder, DecodesWhatCamerasSendAndRejectsWhatIsDamaged) {
  JpegDecoder decoder;
  const test::Picture picture = test::quadrantPicture(322, 242);
  std::shared_ptr<VideoFrame> first;
  for (const auto chroma : {test::JpegChroma::C444, test::JpegChroma::C422, test::JpegChroma::C420}) {
    const std::vector<std::uint8_t> jpeg = test::encodeJpeg(picture, chroma);
    const auto frame = decoder.decode(jpeg, 322, 242);
    ASSERT_TRUE(frame);
    EXPECT_TRUE(test::showsQuadrants(*frame));
    if (!first) {
      first = frame;
    }
    EXPECT_FALSE(decoder.decode(jpeg, 320, 240)) << "not the size that was announced";
    EXPECT_FALSE(decoder.decode(std::span(jpeg).first(jpeg.size() / 2), 322, 242));
    EXPECT_FALSE(decoder.decode(std::span(jpeg).first(20), 322, 242));

    std::vector<std::uint8_t> gap = jpeg;
    gap.erase(gap.end() - 900, gap.end() - 500);
    EXPECT_FALSE(decoder.decode(gap, 322, 242)) << "a packet was lost on the way";

    std::vector<std::uint8_t> untidy = jpeg;
    untidy.insert(untidy.begin() + 2, 5, 0);
    EXPECT_TRUE(decoder.decode(untidy, 322, 242)) << "stray bytes between segments";
  }
  EXPECT_FALSE(decoder.decode({}, 322, 242));
  EXPECT_TRUE(test::showsQuadrants(*first)) << "a frame was overwritten by a later one";
}

TEST(JpegDecoder, ADamagedHeaderCostsOnlyItsOwnPicture) {
  const std::vector<std::uint8_t> jpeg =
      test::encodeJpeg(test::quadrantPicture(64, 48), test::JpegChroma::C420);
  JpegDecoder decoder;
  for (std::size_t length = 0; length < jpeg.size(); ++length) {
    EXPECT_FALSE(decoder.decode(std::span(jpeg).first(length), 64, 48));
    ASSERT_TRUE(decoder.decode(jpeg, 64, 48)) << "after one that was cut to " << length << " bytes";
  }
}

TEST(CameraNode, GuessesTheSideFromWholeWordsWhereLibcameraDoesNotStateIt) {
  const auto sideOf = [](const std::string& name, const std::string& description, const char* location) {
    return describeCamera(1,
                          [&](const std::string& key) -> const char* {
                            if (key == "node.name") {
                              return name.c_str();
                            }
                            if (key == "node.description") {
                              return description.c_str();
                            }
                            return key == "api.libcamera.location" ? location : nullptr;
                          })
        .position;
  };
  using enum AVCaptureDevicePosition;
  EXPECT_EQ(sideOf("v4l2_input.usb", "HP World Facing", nullptr), Back);
  EXPECT_EQ(sideOf("v4l2_input.front_0", "", nullptr), Front);
  EXPECT_EQ(sideOf("cam", "User-facing camera", nullptr), Front);
  EXPECT_EQ(sideOf("cam", "Backlit Superuser 3000", nullptr), Unspecified);
  EXPECT_EQ(sideOf("cam", "Feedback (back)", nullptr), Back);
  EXPECT_EQ(sideOf("rear", "Rear", "front"), Front);
  EXPECT_EQ(sideOf("rear", "Rear", "external"), Unspecified);
}

}  // namespace
}  // namespace nivlo
