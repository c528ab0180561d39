#include "linux/camera/pipewire/CameraRegistry.hpp"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <utility>

#include <spa/param/param.h>

#include "linux/camera/pipewire/StreamFormat.hpp"

namespace nivlo {
namespace {

std::string_view valueOf(const spa_dict* properties, const char* key) {
  const char* value = properties != nullptr ? spa_dict_lookup(properties, key) : nullptr;
  return value != nullptr ? value : "";
}

std::uint32_t numberOf(const spa_dict* properties, const char* key) {
  const std::string_view text = valueOf(properties, key);
  std::uint32_t number = SPA_ID_INVALID;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

struct CameraRegistry::Entry {
  void describe(const pw_node_info* info) {
    const bool onlyGrey = camera.onlyGrey;
    camera = describeCamera(camera.id, [info](const char* key) { return spa_dict_lookup(info->props, key); });
    camera.onlyGrey = onlyGrey;
    registry->callbacks_.camerasChanged();
  }

  void formatOffered(std::uint32_t index, const spa_pod* format) {
    const bool onlyGrey = (index == 0 || camera.onlyGrey) && !offersColours(format);
    if (onlyGrey != std::exchange(camera.onlyGrey, onlyGrey)) {
      registry->callbacks_.camerasChanged();
    }
  }

  CameraRegistry* registry;
  CameraNode camera;
  Owned<pw_node, destroyProxy> node;
  ListenerHook listener;
};

const pw_core_events CameraRegistry::kCoreEvents = [] {
  pw_core_events events{};
  events.version = PW_VERSION_CORE_EVENTS;
  events.done = [](void* self, uint32_t id, int sequence) {
    if (id == PW_ID_CORE) {
      static_cast<CameraRegistry*>(self)->roundTripDone(sequence);
    }
  };
  events.error = [](void* self, uint32_t id, int, int result, const char*) {
    if (id == PW_ID_CORE && result == -EPIPE) {
      static_cast<CameraRegistry*>(self)->connectionBroke();
    }
  };
  return events;
}();

const pw_registry_events CameraRegistry::kRegistryEvents = [] {
  pw_registry_events events{};
  events.version = PW_VERSION_REGISTRY_EVENTS;
  events.global = [](void* self, uint32_t id, uint32_t, const char* type, uint32_t version,
                     const spa_dict* properties) {
    static_cast<CameraRegistry*>(self)->globalAdded(id, type, version, properties);
  };
  events.global_remove = [](void* self, uint32_t id) {
    static_cast<CameraRegistry*>(self)->globalRemoved(id);
  };
  return events;
}();

const pw_node_events CameraRegistry::kNodeEvents = [] {
  pw_node_events events{};
  events.version = PW_VERSION_NODE_EVENTS;
  events.info = [](void* data, const pw_node_info* info) {
    if (info->props != nullptr && (info->change_mask & PW_NODE_CHANGE_MASK_PROPS) != 0) {
      static_cast<Entry*>(data)->describe(info);
    }
  };
  events.param = [](void* data, int, uint32_t id, uint32_t index, uint32_t, const spa_pod* param) {
    if (id == SPA_PARAM_EnumFormat && param != nullptr) {
      static_cast<Entry*>(data)->formatOffered(index, param);
    }
  };
  return events;
}();

CameraRegistry::CameraRegistry(PipeWireLoop& loop, Callbacks callbacks)
    : loop_(loop),
      callbacks_(std::move(callbacks)),
      context_(pw_context_new(loop.get(), nullptr, 0)),
      timer_(loop, [this] {
        disconnect();
        connect();
      }) {
  connect();
}

CameraRegistry::~CameraRegistry() { disconnect(); }

std::vector<CameraNode> CameraRegistry::cameras() const {
  std::vector<CameraNode> cameras;
  if (broken_) {
    return cameras;
  }
  for (const auto& [id, entry] : entries_) {
    const auto isSame = [&name = entry->camera.name](const CameraNode& other) { return other.name == name; };
    if (entry->camera.name.empty() || std::any_of(cameras.begin(), cameras.end(), isSame)) {
      continue;
    }
    cameras.push_back(entry->camera);
  }
  std::sort(cameras.begin(), cameras.end(), comesBefore);
  return cameras;
}

std::optional<CameraNode> CameraRegistry::find(const std::string& name) const {
  if (broken_) {
    return std::nullopt;
  }
  for (const auto& [id, entry] : entries_) {
    if (entry->camera.name == name) {
      return entry->camera;
    }
  }
  return std::nullopt;
}

bool CameraRegistry::isLinkedElsewhere(std::uint32_t consumer, std::uint32_t camera) const {
  return std::any_of(links_.begin(), links_.end(), [&](const auto& link) {
    return link.second.consumer == consumer && link.second.source != camera;
  });
}

void CameraRegistry::connect() {
  broken_ = false;
  listed_ = false;
  roundTrips_ = 0;
  core_.reset(context_ ? pw_context_connect(context_.get(), nullptr, 0) : nullptr);
  if (!core_) {
    reconnectLater();
    return;
  }
  pw_core_add_listener(core_.get(), coreListener_.claim(), &kCoreEvents, this);
  registry_.reset(pw_core_get_registry(core_.get(), PW_VERSION_REGISTRY, 0));
  pw_registry_add_listener(registry_.get(), registryListener_.claim(), &kRegistryEvents, this);
  roundTrip_ = pw_core_sync(core_.get(), PW_ID_CORE, 0);
}

void CameraRegistry::disconnect() {
  const bool hadCameras = !entries_.empty();
  entries_.clear();
  links_.clear();
  if (core_) {
    callbacks_.connectionLost();
  }
  if (hadCameras) {
    callbacks_.camerasChanged();
  }
  registryListener_.reset();
  registry_.reset();
  coreListener_.reset();
  core_.reset();
}

// libpipewire is still handling a message of this connection, so the timer has to replace it.
void CameraRegistry::connectionBroke() {
  if (std::exchange(broken_, true)) {
    return;
  }
  reconnectLater();
  callbacks_.camerasChanged();
}

void CameraRegistry::reconnectLater() { timer_.set(reconnectDelay_.next()); }

void CameraRegistry::globalAdded(std::uint32_t id, const std::string& type, std::uint32_t version,
                                 const spa_dict* properties) {
  if (type == PW_TYPE_INTERFACE_Link) {
    links_[id] = {numberOf(properties, PW_KEY_LINK_OUTPUT_NODE),
                  numberOf(properties, PW_KEY_LINK_INPUT_NODE)};
    return;
  }
  if (type != PW_TYPE_INTERFACE_Node || valueOf(properties, PW_KEY_MEDIA_CLASS) != "Video/Source") {
    return;
  }
  auto entry = std::make_unique<Entry>();
  entry->registry = this;
  entry->camera.id = id;
  // The registry tells only some of the properties; the node's own info event brings the rest.
  entry->node.reset(static_cast<pw_node*>(
      pw_registry_bind(registry_.get(), id, type.c_str(), std::min<uint32_t>(version, PW_VERSION_NODE), 0)));
  if (!entry->node) {
    return;
  }
  pw_node_add_listener(entry->node.get(), entry->listener.claim(), &kNodeEvents, entry.get());
  std::uint32_t formats = SPA_PARAM_EnumFormat;
  pw_node_subscribe_params(entry->node.get(), &formats, 1);
  entries_[id] = std::move(entry);
}

void CameraRegistry::globalRemoved(std::uint32_t id) {
  links_.erase(id);
  if (entries_.erase(id) > 0) {
    callbacks_.camerasChanged();
  }
}

// The first round trip brings all nodes, the second one the properties of those nodes.
void CameraRegistry::roundTripDone(int sequence) {
  if (sequence != roundTrip_ || listed_) {
    return;
  }
  reconnectDelay_.reset();
  if (++roundTrips_ < 2) {
    roundTrip_ = pw_core_sync(core_.get(), PW_ID_CORE, 0);
    return;
  }
  listed_ = true;
  loop_.wake();
}

}  // namespace nivlo
