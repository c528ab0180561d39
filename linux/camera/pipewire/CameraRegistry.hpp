// Which cameras there are, and the connection over which that is known.
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
#include "linux/camera/pipewire/EventLoop.hpp"
#include "linux/camera/pipewire/Handles.hpp"
#include "linux/timing/Backoff.hpp"

namespace nivlo::pipewire {

/// Follows the daemon's list of cameras. A connection that is lost, or cannot be had, is tried again with a
/// growing pause. Created, used and destroyed on the loop's thread, on which its callbacks run too.
class CameraRegistry {
 public:
  struct Callbacks {
    /// A camera came, went or changed. Too deep inside the daemon's messages to destroy a stream.
    std::function<void()> camerasChanged;
    /// The connection is about to be given up: whatever uses core() must be destroyed now. There are no
    /// cameras any more.
    std::function<void()> connectionLost;
  };

  CameraRegistry(EventLoop& loop, Callbacks callbacks);
  ~CameraRegistry();

  /// Whether the first list of cameras is complete, or there is no daemon to ask.
  bool isSettled() const { return !core_ || listed_; }

  /// Null while there is no connection.
  pw_core* core() const { return core_.get(); }

  /// The preferred one first. Of cameras with the same name only one is in the list.
  std::vector<CameraNode> cameras() const;

  std::optional<CameraNode> find(const std::string& name) const;

  /// Whether the consumer's node is known to take its pictures from another node than that.
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

  EventLoop& loop_;
  Callbacks callbacks_;
  ContextPtr context_;
  CorePtr core_;
  Listener coreListener_;
  RegistryPtr registry_;
  Listener registryListener_;
  std::map<std::uint32_t, std::unique_ptr<Entry>> entries_;
  std::map<std::uint32_t, Link> links_;
  int roundTrip_ = 0;
  int roundTrips_ = 0;
  bool listed_ = false;
  bool broken_ = false;  ///< the connection is only waiting to be given up
  Backoff reconnectDelay_{std::chrono::milliseconds(100), std::chrono::seconds(2)};
  LoopTimer timer_;
};

}  // namespace nivlo::pipewire
