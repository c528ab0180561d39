#include "host/control/ControlObject.hpp"

#include <utility>

#include "host/control/ControlInterface.hpp"

namespace nivlo {

namespace {

constexpr auto kPropertiesInterface = "org.freedesktop.DBus.Properties";

void onCall(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method,
            GVariant* arguments, GDBusMethodInvocation* invocation, Controls& controls) {
  const auto answer = controls.call(method, arguments);
  if (answer.error.empty()) {
    g_dbus_method_invocation_return_value(invocation, answer.values);
  } else {
    g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_FAILED,
                                                  answer.error.c_str());
  }
}

}  // namespace

const GDBusInterfaceVTable ControlObject::kHandlers{
    [](GDBusConnection* connection, const gchar* sender, const gchar* path, const gchar* interface,
       const gchar* method, GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
      onCall(connection, sender, path, interface, method, arguments, invocation,
             static_cast<ControlObject*>(self)->controls_);
    },
    [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GError** error,
       gpointer self) -> GVariant* {
      auto values = static_cast<ControlObject*>(self)->properties();
      if (values.empty()) {
        g_set_error_literal(error, G_DBUS_ERROR, G_DBUS_ERROR_FAILED, Controls::kNotShowing);
        return nullptr;
      }
      return values[name].release();
    },
    nullptr,
    {}};

ControlObject::ControlObject(GDBusConnection* connection, Controls& controls, GActionGroup* actions)
    : connection_(G_DBUS_CONNECTION(g_object_ref(connection))),
      controls_(controls),
      signalled_(properties()) {
  const Owned<GDBusNodeInfo, g_dbus_node_info_unref> description(
      g_dbus_node_info_new_for_xml(kControlDescription, nullptr));
  interface_ = g_dbus_connection_register_object(connection, kControlPath, description->interfaces[0],
                                                 &kHandlers, this, nullptr, nullptr);
  actions_ = g_dbus_connection_export_action_group(connection, kControlPath, actions, nullptr);
}

ControlObject::~ControlObject() {
  g_dbus_connection_unexport_action_group(connection_.get(), actions_);
  g_dbus_connection_unregister_object(connection_.get(), interface_);
}

PropertyValues ControlObject::properties() const {
  const auto* show = controls_.show();
  return show ? propertiesOf(*show) : PropertyValues();
}

void ControlObject::signalChanges() {
  auto values = properties();
  GVariantBuilder changed;
  g_variant_builder_init(&changed, G_VARIANT_TYPE_VARDICT);
  bool any = false;
  for (const auto& [name, value] : values) {
    const auto& earlier = signalled_[name];
    if (!earlier || !g_variant_equal(earlier.get(), value.get())) {
      any = true;
      g_variant_builder_add(&changed, "{sv}", name.c_str(), value.get());
    }
  }
  const Owned<GVariant, g_variant_unref> signal(g_variant_ref_sink(
      g_variant_new("(s@a{sv}as)", kControlInterface, g_variant_builder_end(&changed), nullptr)));
  signalled_ = std::move(values);
  if (any) {
    g_dbus_connection_emit_signal(connection_.get(), nullptr, kControlPath, kPropertiesInterface,
                                  "PropertiesChanged", signal.get(), nullptr);
  }
}

}  // namespace nivlo
