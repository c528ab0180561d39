// The connection to the PipeWire daemon, and the cameras that the daemon lists.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "linux/camera/pipewire/CameraNode.hpp"
#include "linux/camera/pipewire/Handles.hpp"
#include "linux/camera/pipewire/PipeWireLoop.hpp"
#include "linux/handles/Owned.hpp"
#include "linux/timing/Backoff.hpp"

namespace nivlo {

/// Keeps up with the daemon's list of cameras. A connection that breaks, or cannot be made, is tried again
/// after growing delays. Created, used and destroyed on the loop's thread, where its callbacks run too.
class CameraRegistry {
 public:
  struct Callbacks {
    /// A camera came, went or changed. No stream may be destroyed in here, because libpipewire is still in
    /// the middle of handling a message.
    std::function<void()> camerasChanged;
    /// The connection is about to be closed: whatever uses core() must be destroyed now. There are no cameras
    /// any more.
    std::function<void()> connectionLost;
  };

  CameraRegistry(PipeWireLoop& loop, Callbacks callbacks);
  ~CameraRegistry();

  /// Returns whether the first list of cameras is complete, or there is no daemon that could send one.
  bool isSettled() const { return !core_ || listed_; }

  /// Returns whether the daemon runs, as far as is known.
  bool isConnected() const { return core_ && !broken_; }

  /// Null while there is no connection.
  pw_core* core() const { return core_.get(); }

  /// The cameras there are now, in the order of comesBefore(). Of cameras with the same name only one is
  /// listed, because their unique IDs would be the same.
  std::vector<CameraNode> cameras() const;

  /// The camera with this name; nothing while there is none.
  std::optional<CameraNode> find(const std::string& name) const;

  /// Returns whether the node `consumer` is linked to a source other than the node `camera`, for example
  /// because somebody rewired it with a patch bay. False while no link is known.
  bool isLinkedElsewhere(std::uint32_t consumer, std::uint32_t camera) const;

 private:
  struct Entry;
  struct Link {
    std::uint32_t source, consumer;
  };

  static const pw_core_events kCoreEvents;
  static const pw_registry_events kRegistryEvents;
  static const pw_node_events kNodeEvents;

  void connect();
  void disconnect();
  void connectionBroke();
  void reconnectLater();
  void globalAdded(std::uint32_t id, const std::string& type, std::uint32_t version,
                   const spa_dict* properties);
  void globalRemoved(std::uint32_t id);
  void roundTripDone(int sequence);

  PipeWireLoop& loop_;
  Callbacks callbacks_;
  Owned<pw_context, pw_context_destroy> context_;
  Owned<pw_core, pw_core_disconnect> core_;
  ListenerHook coreListener_;
  Owned<pw_registry, destroyProxy> registry_;
  ListenerHook registryListener_;
  std::map<std::uint32_t, std::unique_ptr<Entry>> entries_;
  std::map<std::uint32_t, Link> links_;
  int roundTrip_ = 0;
  int roundTrips_ = 0;
  bool listed_ = false;
  bool broken_ = false;  ///< the connection is dead and waits for the timer to replace it
  Backoff reconnectDelay_{std::chrono::milliseconds(100), std::chrono::seconds(2)};
  LoopTimer timer_;
};

}  // namespace nivlo
