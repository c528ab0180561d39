#include "linux/camera/pipewire/buffers/BufferReader.hpp"

#include <algorithm>
#include <chrono>
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

// Returns the place of the picture in the buffer's memory, empty when the buffer places it outside that
// memory. The sender can still write to the chunk, so each value is read once and only then checked.
std::vector<DataBlock> blocksOf(const spa_buffer& buffer, const BufferMemory& memory) {
  std::vector<DataBlock> blocks;
  for (std::size_t i = 0; i < memory.blockCount(); ++i) {
    const volatile spa_chunk& chunk = *buffer.datas[i].chunk;
    const std::span<const std::uint8_t> all = memory.block(i);
    const std::size_t offset = chunk.offset;
    const std::size_t size = chunk.size;
    const int stride = chunk.stride;
    if (offset > all.size() || size > all.size() - offset || stride < 0) {
      return {};
    }
    blocks.push_back({all.subspan(offset, size), stride});
  }
  return blocks;
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
  const std::vector<DataBlock> blocks = blocksOf(*content, *buffer.memory);
  if (blocks.empty()) {
    return {.defect = "it places a picture outside its buffer"};
  }
  // Cameras send an empty buffer when a picture was lost on the way.
  if (blocks[0].bytes.empty()) {
    return {};
  }

  std::shared_ptr<VideoFrame> frame;
  if (!format_->isJpeg && loans.canLend(buffer)) {
    frame = lendRaw(buffer, loans, blocks);
  } else {
    buffer.memory->beginReading();
    frame =
        format_->isJpeg ? jpeg_.decode(blocks[0].bytes, format_->width, format_->height) : copyRaw(blocks);
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
                                                  const std::vector<DataBlock>& blocks) const {
  std::shared_ptr<VideoFrame> frame = describeRaw(blocks);
  if (frame) {
    frame->storage = loans.lend(buffer);
  }
  return frame;
}

std::shared_ptr<VideoFrame> BufferReader::copyRaw(const std::vector<DataBlock>& blocks) {
  std::size_t size = 0;
  for (const DataBlock& block : blocks) {
    size += block.bytes.size();
  }
  const std::shared_ptr<std::uint8_t> memory = copies_.borrow(size);
  std::vector<DataBlock> copied;
  std::uint8_t* to = memory.get();
  for (const DataBlock& block : blocks) {
    std::copy(block.bytes.begin(), block.bytes.end(), to);
    copied.push_back({{to, block.bytes.size()}, block.stride});
    to += block.bytes.size();
  }
  std::shared_ptr<VideoFrame> frame = describeRaw(copied);
  if (frame) {
    frame->storage = memory;
  }
  return frame;
}

std::shared_ptr<VideoFrame> BufferReader::describeRaw(const std::vector<DataBlock>& blocks) const {
  const auto planes = layPlanes(format_->pixels, format_->width, format_->height, blocks);
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
