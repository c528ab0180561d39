#include "host/control/ControlService.hpp"

#include <utility>

#include "host/control/ControlInterface.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::seconds kAnswerTimeout{3};

constexpr auto kBusName = "org.freedesktop.DBus";
constexpr auto kBusPath = "/org/freedesktop/DBus";

// Flags and reply of RequestName, as D-Bus numbers them. Nobody can take the name away, because the flag that
// would allow it is not set.
constexpr guint kWaitInQueue = 0;
constexpr guint kDoNotQueue = 4;
constexpr guint kPrimaryOwner = 1;

}  // namespace

ControlService::ControlService(std::function<void()> quit)
    : controls_(std::move(quit)),
      bus_(sessionBusAddress(), {[this](GDBusConnection* connection) { connected(connection); },
                                 [this] { lost(); }, [this](const std::string& cause) { report(cause); }}) {}

bool ControlService::anotherIsRunning() {
  const auto timeout = EventSource::onTimeout(kAnswerTimeout, [this] { report("it does not answer"); });
  while (place_ == Place::Unknown) {
    g_main_context_iteration(nullptr, TRUE);
  }
  return place_ == Place::Another;
}

void ControlService::attach(WallpaperShow* show) {
  controls_.attach(show);
  statusChanged();
}

void ControlService::statusChanged() {
  if (std::exchange(willSignal_, true)) {
    return;
  }
  signalling_ = EventSource::onTimeout(std::chrono::milliseconds(0), [this] {
    willSignal_ = false;
    actions_.follow();
    if (object_) {
      object_->signalChanges();
    }
  });
}

void ControlService::connected(GDBusConnection* connection) {
  // The object comes before the name: whoever sees the name may call at once.
  object_.emplace(connection, controls_, actions_.group());
  calls_.emplace(connection, kBusName);
  shared_.emplace(G_BUS_TYPE_SESSION);
  const bool starting = place_ == Place::Unknown;
  calls_->call({kBusPath, kBusName, "RequestName"},
               g_variant_new("(su)", kControlName, starting ? kDoNotQueue : kWaitInQueue),
               [this, starting](const MethodCalls::Reply& reply) {
                 guint answer = kPrimaryOwner;
                 if (!reply.values) {
                   report(reply.error);
                 } else {
                   g_variant_get(reply.values, "(u)", &answer);
                 }
                 if (starting && place_ == Place::Unknown) {
                   place_ = answer == kPrimaryOwner ? Place::Only : Place::Another;
                 }
               });
}

void ControlService::lost() {
  object_.reset();
  calls_.reset();
}

void ControlService::report(const std::string& cause) {
  if (place_ == Place::Unknown) {
    place_ = Place::Only;
  }
  if (!std::exchange(reported_, true)) {
    NSLog(
        "control: no session bus (%@). Until there is one, 'nivlo ctl' cannot reach this program, and a "
        "second start is not noticed",
        cause);
  }
}

}  // namespace nivlo
