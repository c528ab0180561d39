#include "linux/desktop/bus/BusClient.hpp"

#include <memory>
#include <utility>

namespace nivlo {

namespace {

using Answered = std::function<void(const MethodCalls::Reply&)>;

Owned<GDBusConnection, g_object_unref> shared(GDBusConnection* connection) {
  return Owned<GDBusConnection, g_object_unref>(G_DBUS_CONNECTION(g_object_ref(connection)));
}

void onAnswer(GObject* connection, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Answered> answered(static_cast<Answered*>(data));
  GUnixFDList* rawDescriptors = nullptr;
  GError* rawError = nullptr;
  const Owned<GVariant, g_variant_unref> values(g_dbus_connection_call_with_unix_fd_list_finish(
      G_DBUS_CONNECTION(connection), &rawDescriptors, result, &rawError));
  const Owned<GError, g_error_free> error(rawError);
  if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
    return;
  }
  const Owned<GUnixFDList, g_object_unref> descriptors(rawDescriptors);
  (*answered)({values.get(), descriptors.get(), error ? error->message : ""});
}

}  // namespace

MethodCalls::MethodCalls(GDBusConnection* connection, std::string service)
    : connection_(shared(connection)), service_(std::move(service)), cancellable_(g_cancellable_new()) {}

MethodCalls::~MethodCalls() { g_cancellable_cancel(cancellable_.get()); }

void MethodCalls::call(const Target& target, GVariant* arguments, Answered answered) {
  constexpr int defaultTimeout = -1;
  g_dbus_connection_call_with_unix_fd_list(connection_.get(), service_.c_str(), target.path, target.interface,
                                           target.method, arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                           defaultTimeout, nullptr, cancellable_.get(), onAnswer,
                                           std::make_unique<Answered>(std::move(answered)).release());
}

void MethodCalls::dropAnswers() {
  g_cancellable_cancel(cancellable_.get());
  cancellable_.reset(g_cancellable_new());
}

SignalSubscription::SignalSubscription(GDBusConnection* connection, const Source& source,
                                       std::function<void(GVariant*)> handler)
    : connection_(shared(connection)), handler_(std::move(handler)) {
  const auto onSignal = [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                           GVariant* values,
                           gpointer data) { static_cast<SignalSubscription*>(data)->handler_(values); };
  id_ = g_dbus_connection_signal_subscribe(connection, source.service, source.interface, source.signal,
                                           source.path, nullptr, G_DBUS_SIGNAL_FLAGS_NONE, onSignal, this,
                                           nullptr);
}

SignalSubscription::~SignalSubscription() { g_dbus_connection_signal_unsubscribe(connection_.get(), id_); }

ServiceWatch::ServiceWatch(GDBusConnection* connection, const std::string& service,
                           std::function<void(bool)> changed)
    : changed_(std::move(changed)) {
  const auto appeared = [](GDBusConnection*, const gchar*, const gchar*, gpointer data) {
    static_cast<ServiceWatch*>(data)->changed_(true);
  };
  const auto vanished = [](GDBusConnection*, const gchar*, gpointer data) {
    static_cast<ServiceWatch*>(data)->changed_(false);
  };
  id_ = g_bus_watch_name_on_connection(connection, service.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE, appeared,
                                       vanished, this, nullptr);
}

ServiceWatch::~ServiceWatch() { g_bus_unwatch_name(id_); }

}  // namespace nivlo
