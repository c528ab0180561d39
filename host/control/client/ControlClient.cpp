#include "host/control/client/ControlClient.hpp"

#include <string_view>
#include <thread>

#include "host/control/ControlInterface.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/desktop/bus/BusLink.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kTimeout{5000};
constexpr std::chrono::milliseconds kPollInterval{20};

/// Another program can own the name, so replies are trusted no more than their types.
const GVariantType* replyOf(std::string_view method) {
  return method == "GetStatus" ? G_VARIANT_TYPE("(a{sv})") : G_VARIANT_TYPE_UNIT;
}

}  // namespace

ControlClient::ControlClient() {
  if (const auto address = sessionBusAddress(); !address.empty()) {
    connection_.reset(g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
  }
}

int ControlClient::Answer::number(const char* key) const {
  gint32 result = 0;
  if (values) {
    const Owned<GVariant, g_variant_unref> status(g_variant_get_child_value(values.get(), 0));
    g_variant_lookup(status.get(), key, "i", &result);
  }
  return result;
}

std::string ControlClient::Answer::text(const char* key) const {
  const gchar* result = "";
  if (!values) {
    return result;
  }
  const Owned<GVariant, g_variant_unref> status(g_variant_get_child_value(values.get(), 0));
  g_variant_lookup(status.get(), key, "&s", &result);
  return result;
}

ControlClient::Answer ControlClient::call(const char* method, GVariant* arguments) const {
  const Owned<GVariant, g_variant_unref> owned(arguments ? g_variant_ref_sink(arguments) : nullptr);
  if (!connection_) {
    return {Outcome::NotRunning, nullptr,
            "there is no session bus to reach a running Nivlo on; run this inside the desktop session"};
  }
  GError* raw = nullptr;
  Owned<GVariant, g_variant_unref> values(g_dbus_connection_call_sync(
      connection_.get(), kControlName, kControlPath, kControlInterface, method, owned.get(), replyOf(method),
      G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(kTimeout.count()), nullptr, &raw));
  const Owned<GError, g_error_free> error(raw);
  if (values) {
    return {Outcome::Done, std::move(values), ""};
  }
  if (g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) ||
      g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN)) {
    return {Outcome::NotRunning, nullptr, "Nivlo is not running in this session; start it with 'nivlo'"};
  }
  g_dbus_error_strip_remote_error(error.get());
  return {Outcome::Refused, nullptr, visibleText(error->message)};
}

bool ControlClient::waitUntilGone(std::chrono::seconds timeout) const {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (call("GetStatus").outcome != Outcome::NotRunning) {
    if (std::chrono::steady_clock::now() > deadline) {
      return false;
    }
    std::this_thread::sleep_for(kPollInterval);
  }
  return true;
}

}  // namespace nivlo
