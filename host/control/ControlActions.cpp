#include "host/control/ControlActions.hpp"

namespace nivlo {

namespace {

void swap(GSimpleAction*, GVariant*, gpointer controls) {
  static_cast<Controls*>(controls)->call("Swap", nullptr);
}

void quit(GSimpleAction*, GVariant*, gpointer controls) {
  static_cast<Controls*>(controls)->call("Quit", nullptr);
}

void pause(GSimpleAction*, GVariant* paused, gpointer controls) {
  static_cast<Controls*>(controls)->call(g_variant_get_boolean(paused) ? "Pause" : "Resume", nullptr);
}

void callWith(GVariant* argument, const char* method, gpointer controls) {
  const Owned<GVariant, g_variant_unref> arguments(g_variant_ref_sink(g_variant_new_tuple(&argument, 1)));
  static_cast<Controls*>(controls)->call(method, arguments.get());
}

void scan(GSimpleAction*, GVariant* scanning, gpointer controls) {
  callWith(scanning, "SetScanning", controls);
}

void choosePreset(GSimpleAction*, GVariant* preset, gpointer controls) {
  callWith(preset, "SetPreset", controls);
}

// Activating an action that has no handler for it requests a change of its state: a boolean is toggled, any
// other state is set to the parameter.
constexpr GActionEntry kActions[] = {{"paused", nullptr, nullptr, "false", pause, {}},
                                     {"scanning", nullptr, nullptr, "false", scan, {}},
                                     {"preset", nullptr, "i", "1", choosePreset, {}},
                                     {"swap", swap, nullptr, nullptr, nullptr, {}},
                                     {"quit", quit, nullptr, nullptr, nullptr, {}}};

}  // namespace

ControlActions::ControlActions(Controls& controls)
    : controls_(controls), group_(g_simple_action_group_new()) {
  g_action_map_add_action_entries(G_ACTION_MAP(group_.get()), kActions, G_N_ELEMENTS(kActions), &controls_);
}

void ControlActions::setState(const char* action, GVariant* state) {
  g_simple_action_set_state(G_SIMPLE_ACTION(g_action_map_lookup_action(G_ACTION_MAP(group_.get()), action)),
                            state);
}

void ControlActions::follow() {
  if (const auto* show = controls_.show()) {
    const auto status = show->status();
    setState("paused", g_variant_new_boolean(status.paused));
    setState("scanning", g_variant_new_boolean(status.scanning.value_or(false)));
    auto* scanning = g_action_map_lookup_action(G_ACTION_MAP(group_.get()), "scanning");
    g_simple_action_set_enabled(G_SIMPLE_ACTION(scanning), status.scanning.has_value());
    setState("preset", g_variant_new_int32(status.preset));
  }
}

}  // namespace nivlo
