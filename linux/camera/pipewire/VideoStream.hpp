// The pictures of one camera, for as long as it gives them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <pipewire/pipewire.h>

#include "linux/camera/pipewire/CameraNode.hpp"
#include "linux/camera/pipewire/EventLoop.hpp"
#include "linux/camera/pipewire/Handles.hpp"
#include "linux/camera/pipewire/StreamFormat.hpp"
#include "linux/camera/pipewire/buffers/BufferLoans.hpp"
#include "linux/camera/pipewire/buffers/BufferReader.hpp"

namespace nivlo::pipewire {

/// One consumer node, linked to one camera. It does not recover from anything: when it has failed, make
/// another. Created, used and destroyed on the loop's thread, but not from within its own callbacks, which
/// run there too.
class VideoStream {
 public:
  struct Callbacks {
    std::function<void(VideoFramePtr)> frame;
    /// No frame will come any more. May come more than once.
    std::function<void()> failed;
    /// Pictures are left out because the camera does something wrong. Called at most once, with what that is.
    std::function<void(const std::string& cause)> defective;
  };

  VideoStream(EventLoop& loop, pw_core* core, const CameraNode& camera, Callbacks callbacks);
  ~VideoStream();
  VideoStream(const VideoStream&) = delete;
  VideoStream& operator=(const VideoStream&) = delete;

  /// The consumer's node; SPA_ID_INVALID before PipeWire has made it.
  std::uint32_t nodeId() const { return stream_ ? pw_stream_get_node_id(stream_) : SPA_ID_INVALID; }

 private:
  static const pw_stream_events kEvents;

  void connect(pw_core* core, const CameraNode& camera);
  void stateChanged(pw_stream_state state);
  void formatChanged(const spa_pod* format);
  void process();
  void reportOnce(const std::string& cause);

  EventLoop& loop_;
  Callbacks callbacks_;
  pw_stream* stream_ = nullptr;
  Listener listener_;
  BufferLoans loans_;
  BufferReader reader_;
  bool reported_ = false;
};

}  // namespace nivlo::pipewire
