#include "linux/desktop/session/LoginSession.hpp"

#include <cstdlib>
#include <utility>

namespace nivlo {

namespace {

constexpr auto kService = "org.freedesktop.login1";
constexpr auto kManagerPath = "/org/freedesktop/login1";
constexpr auto kManager = "org.freedesktop.login1.Manager";
constexpr auto kSession = "org.freedesktop.login1.Session";
constexpr auto kProperties = "org.freedesktop.DBus.Properties";
// The caller's session or, when the caller is a user service, the session on the user's screen.
constexpr auto kOwnSession = "auto";

constexpr auto kLocked = "locked";
constexpr auto kInactive = "inactive";
constexpr auto kSleeping = "sleeping";

bool has(GVariant* values, const char* type) {
  return values && g_variant_is_of_type(values, G_VARIANT_TYPE(type));
}

Owned<GVariant, g_variant_unref> child(GVariant* values, gsize index) {
  return Owned<GVariant, g_variant_unref>(g_variant_get_child_value(values, index));
}

}  // namespace

LoginSession::LoginSession(GDBusConnection* connection, BackgroundReasons& reasons,
                           std::function<void(const std::string&)> failed)
    : connection_(connection),
      reasons_(reasons),
      failed_(std::move(failed)),
      calls_(connection, kService),
      inhibitor_(connection),
      watch_(connection, kService, [this](bool there) {
        if (there) {
          follow();
        } else {
          failed_("logind (or elogind) is not running");
        }
      }) {}

void LoginSession::follow() {
  subscriptions_.clear();
  calls_.dropAnswers();
  followSleep();
  const char* id = std::getenv("XDG_SESSION_ID");
  findSession(id && *id ? id : kOwnSession);
}

void LoginSession::findSession(const std::string& id) {
  calls_.call({kManagerPath, kManager, "GetSession"}, g_variant_new("(s)", id.c_str()),
              [this, id](const MethodCalls::Reply& reply) {
                if (has(reply.values, "(o)")) {
                  followSession(g_variant_get_string(child(reply.values, 0).get(), nullptr));
                } else if (id != kOwnSession) {
                  findSession(kOwnSession);
                } else {
                  failed_("logind does not know the session: " + reply.error);
                }
              });
}

void LoginSession::followSession(const std::string& path) {
  const auto on = [&](const char* interface, const char* signal, std::function<void(GVariant*)> handler) {
    subscriptions_.emplace_back(connection_,
                                SignalSubscription::Source{kService, path.c_str(), interface, signal},
                                std::move(handler));
  };
  on(kSession, "Lock", [this](GVariant*) { reasons_.set(kLocked, true); });
  on(kSession, "Unlock", [this](GVariant*) { reasons_.set(kLocked, false); });
  on(kProperties, "PropertiesChanged", [this](GVariant* values) {
    if (has(values, "(sa{sv}as)")) {
      takeStates(child(values, 1).get());
    }
  });
  calls_.call({path.c_str(), kProperties, "GetAll"}, g_variant_new("(s)", kSession),
              [this](const MethodCalls::Reply& reply) {
                if (has(reply.values, "(a{sv})")) {
                  takeStates(child(reply.values, 0).get());
                } else {
                  failed_("logind does not describe the session: " + reply.error);
                }
              });
}

void LoginSession::takeStates(GVariant* properties) {
  gboolean value = FALSE;
  if (g_variant_lookup(properties, "LockedHint", "b", &value)) {
    reasons_.set(kLocked, value);
  }
  if (g_variant_lookup(properties, "Active", "b", &value)) {
    reasons_.set(kInactive, !value);
  }
}

void LoginSession::followSleep() {
  subscriptions_.emplace_back(connection_,
                              SignalSubscription::Source{kService, kManagerPath, kManager, "PrepareForSleep"},
                              [this](GVariant* values) {
                                if (has(values, "(b)")) {
                                  setSleeping(g_variant_get_boolean(child(values, 0).get()));
                                }
                              });
  takeInhibitor();
  calls_.call({kManagerPath, kProperties, "Get"}, g_variant_new("(ss)", kManager, "PreparingForSleep"),
              [this](const MethodCalls::Reply& reply) {
                if (!has(reply.values, "(v)")) {
                  return;
                }
                const auto sleeping = child(child(reply.values, 0).get(), 0);
                if (has(sleeping.get(), "b")) {
                  reasons_.set(kSleeping, g_variant_get_boolean(sleeping.get()));
                }
              });
}

void LoginSession::setSleeping(bool sleeping) {
  if (!sleeping) {
    takeInhibitor();
  }
  reasons_.set(kSleeping, sleeping);
  if (sleeping) {
    inhibitor_.release();
  }
}

void LoginSession::takeInhibitor() {
  inhibitor_.take([this](const std::string& cause) {
    failed_("logind does not let Nivlo turn the camera off before the machine sleeps: " + cause);
  });
}

}  // namespace nivlo
