// A stream of one camera's pictures, which ends with the camera.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <pipewire/pipewire.h>

#include "linux/camera/pipewire/CameraNode.hpp"
#include "linux/camera/pipewire/Handles.hpp"
#include "linux/camera/pipewire/PipeWireLoop.hpp"
#include "linux/camera/pipewire/buffers/BufferLoans.hpp"
#include "linux/camera/pipewire/buffers/BufferReader.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

/// One consumer node that is linked to one camera. It does not recover: once it has failed, replace it by
/// another. Created, used and destroyed on the loop's thread. Its callbacks run there too and must not
/// destroy it.
class VideoStream {
 public:
  struct Callbacks {
    std::function<void(VideoFramePtr)> frame;
    /// No more frames will come. May be called more than once, even before the constructor returns.
    std::function<void()> failed;
    /// Pictures are left out because the camera does something wrong. Called at most once, with what that is.
    std::function<void(const std::string& cause)> defective;
  };

  VideoStream(PipeWireLoop& loop, pw_core* core, const CameraNode& camera, Callbacks callbacks);
  ~VideoStream();
  VideoStream(const VideoStream&) = delete;
  VideoStream& operator=(const VideoStream&) = delete;

  /// The number of the consumer node; SPA_ID_INVALID before PipeWire has made it.
  std::uint32_t nodeId() const { return stream_ ? pw_stream_get_node_id(stream_.get()) : SPA_ID_INVALID; }

 private:
  static const pw_stream_events kEvents;

  void connect(pw_core* core, const CameraNode& camera);
  void stateChanged(pw_stream_state state);
  void formatChanged(const spa_pod* format);
  void process();
  void reportOnce(const std::string& cause);

  PipeWireLoop& loop_;
  Callbacks callbacks_;
  Owned<pw_stream, pw_stream_destroy> stream_;
  ListenerHook listener_;
  BufferLoans loans_;
  BufferReader reader_;
  bool reported_ = false;
};

}  // namespace nivlo
