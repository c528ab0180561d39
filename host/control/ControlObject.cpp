#include "host/control/ControlObject.hpp"

#include "host/control/ControlInterface.hpp"

namespace nivlo {

namespace {

void onCall(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method,
            GVariant* arguments, GDBusMethodInvocation* invocation, gpointer controls) {
  const auto answer = static_cast<Controls*>(controls)->call(method, arguments);
  if (answer.error.empty()) {
    g_dbus_method_invocation_return_value(invocation, answer.values);
  } else {
    g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_FAILED,
                                                  answer.error.c_str());
  }
}

constexpr GDBusInterfaceVTable kHandlers{onCall, nullptr, nullptr, {}};

}  // namespace

ControlObject::ControlObject(GDBusConnection* connection, Controls& controls, GActionGroup* actions)
    : connection_(G_DBUS_CONNECTION(g_object_ref(connection))) {
  const Owned<GDBusNodeInfo, g_dbus_node_info_unref> description(
      g_dbus_node_info_new_for_xml(kControlDescription, nullptr));
  interface_ = g_dbus_connection_register_object(connection, kControlPath, description->interfaces[0],
                                                 &kHandlers, &controls, nullptr, nullptr);
  actions_ = g_dbus_connection_export_action_group(connection, kControlPath, actions, nullptr);
}

ControlObject::~ControlObject() {
  g_dbus_connection_unexport_action_group(connection_.get(), actions_);
  g_dbus_connection_unregister_object(connection_.get(), interface_);
}

}  // namespace nivlo
