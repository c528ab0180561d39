#include "linux/camera/pipewire/buffers/BufferReader.hpp"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

#include <spa/buffer/meta.h>

namespace nivlo {
namespace {

using Clock = std::chrono::steady_clock;

template <typename T>
const T* findMeta(spa_buffer* buffer, spa_meta_type type) {
  return static_cast<const T*>(spa_buffer_find_meta_data(buffer, type, sizeof(T)));
}

bool isMarkedCorrupt(spa_buffer* buffer) {
  const auto* header = findMeta<spa_meta_header>(buffer, SPA_META_Header);
  if (header != nullptr && (header->flags & SPA_META_HEADER_FLAG_CORRUPTED) != 0) {
    return true;
  }
  return std::any_of(buffer->datas, buffer->datas + buffer->n_datas, [](const spa_data& data) {
    return (data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED) != 0;
  });
}

// Returns the places of the picture in the buffer's memory, nothing when the buffer places it outside that
// memory. The sender can still write to the chunk, so each value is read once and only then checked.
std::vector<BufferReader::Place> placesIn(const spa_buffer& buffer, const BufferMemory& memory) {
  std::vector<BufferReader::Place> places;
  for (std::size_t i = 0; i < memory.blockCount(); ++i) {
    const volatile spa_chunk& chunk = *buffer.datas[i].chunk;
    const std::size_t all = memory.sizeOf(i);
    const std::size_t offset = chunk.offset;
    const std::size_t size = chunk.size;
    const int stride = chunk.stride;
    if (offset > all || size > all - offset || stride < 0) {
      return {};
    }
    places.push_back({offset, size, stride});
  }
  return places;
}

// Senders stamp pictures with CLOCK_MONOTONIC, which is our clock too. A stamp from the future or older than
// a second comes from some other clock and is ignored.
Clock::time_point captureTimeOf(spa_buffer* buffer) {
  const Clock::time_point now = Clock::now();
  const auto* header = findMeta<spa_meta_header>(buffer, SPA_META_Header);
  if (header == nullptr) {
    return now;
  }
  const Clock::time_point told{std::chrono::nanoseconds(header->pts)};
  return told <= now && told > now - std::chrono::seconds(1) ? told : now;
}

}  // namespace

BufferReader::BufferReader(int rotation) : rotation_(rotation) {}

BufferReader::Result BufferReader::read(StreamBuffer& buffer, BufferLoans& loans) {
  spa_buffer* content = buffer.queueEntry->buffer;
  if (!buffer.memory || !format_ || isMarkedCorrupt(content)) {
    return {};
  }
  const std::vector<Place> places = placesIn(*content, *buffer.memory);
  if (places.empty()) {
    return {.defect = "it places a picture outside its buffer"};
  }
  // Cameras send an empty buffer when a picture was lost on the way.
  if (places[0].size == 0) {
    return {};
  }

  std::shared_ptr<VideoFrame> frame;
  if (!format_->isJpeg && loans.canLend(buffer)) {
    frame = lendRaw(buffer, loans, places);
  } else {
    buffer.memory->beginReading();
    frame = format_->isJpeg ? decodeJpeg(*buffer.memory, places[0]) : copyRaw(*buffer.memory, places);
    buffer.memory->endReading();
  }
  if (!frame) {
    // A JPEG picture that lost a packet on its way from the camera is common and not worth a report.
    return {.defect = format_->isJpeg ? nullptr : "its buffers are too small for its pictures"};
  }
  frame->rotation = rotationOf(content);
  frame->captureTime = captureTimeOf(content);
  return {.frame = std::move(frame)};
}

std::shared_ptr<VideoFrame> BufferReader::lendRaw(StreamBuffer& buffer, BufferLoans& loans,
                                                  const std::vector<Place>& places) const {
  std::vector<DataBlock> blocks;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto& [offset, size, stride] = places[i];
    blocks.push_back({buffer.memory->inPlace(i).subspan(offset, size), stride});
  }
  std::shared_ptr<VideoFrame> frame = describeRaw(blocks);
  if (frame) {
    frame->storage = loans.lend(buffer);
  }
  return frame;
}

std::shared_ptr<VideoFrame> BufferReader::copyRaw(const BufferMemory& memory,
                                                  const std::vector<Place>& places) {
  std::size_t size = 0;
  for (const Place& place : places) {
    size += sizeToCopy(place);
  }
  const std::shared_ptr<std::uint8_t> copy = copies_.borrow(size);
  std::vector<DataBlock> blocks;
  std::uint8_t* to = copy.get();
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::span target(to, sizeToCopy(places[i]));
    if (!memory.copy(i, places[i].offset, target)) {
      return nullptr;
    }
    blocks.push_back({target, places[i].stride});
    to += target.size();
  }
  std::shared_ptr<VideoFrame> frame = describeRaw(blocks);
  if (frame) {
    frame->storage = copy;
  }
  return frame;
}

// Decodes a copy: the camera can write to its memory at any time, and the decoder reads the header twice, so
// that a change in between would have it write behind the frame.
std::shared_ptr<VideoFrame> BufferReader::decodeJpeg(const BufferMemory& memory, const Place& place) {
  compressed_.resize(sizeToCopy(place));
  return memory.copy(0, place.offset, compressed_)
             ? jpeg_.decode(compressed_, format_->width, format_->height)
             : nullptr;
}

// No camera needs more for a picture, but a hostile one can offer a sparse file of gigabytes.
std::size_t BufferReader::sizeToCopy(const Place& place) const {
  constexpr std::size_t kMostPerPixel = 8;
  constexpr std::size_t kMostBesides = std::size_t{64} * 1024;
  return std::min(place.size, kMostPerPixel * format_->width * format_->height + kMostBesides);
}

std::shared_ptr<VideoFrame> BufferReader::describeRaw(const std::vector<DataBlock>& blocks) const {
  const auto planes = format_->isGrey ? layGreyPlanes(format_->width, format_->height, blocks)
                                      : layPlanes(format_->pixels, format_->width, format_->height, blocks);
  if (!planes) {
    return nullptr;
  }
  auto frame = std::make_shared<VideoFrame>();
  frame->format = format_->pixels;
  frame->width = format_->width;
  frame->height = format_->height;
  frame->planes = *planes;
  frame->matrix = format_->matrix;
  frame->range = format_->range;
  return frame;
}

int BufferReader::rotationOf(spa_buffer* buffer) const {
  const auto* transform = findMeta<spa_meta_videotransform>(buffer, SPA_META_VideoTransform);
  if (transform == nullptr) {
    return rotation_;
  }
  // The value counts the quarter turns that the picture has been given, while a frame says how to turn it
  // back. Values from four on add mirroring to the same turns; the mirroring is ignored.
  constexpr std::uint32_t kQuarters = 4;
  return static_cast<int>((kQuarters - transform->transform % kQuarters) % kQuarters) * 90;
}

}  // namespace nivlo
