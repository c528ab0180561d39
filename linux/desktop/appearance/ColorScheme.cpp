#include "linux/desktop/appearance/ColorScheme.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/bus/BusLink.hpp"

namespace nivlo {

namespace {

constexpr auto kPortal = "org.freedesktop.portal.Desktop";
constexpr auto kPath = "/org/freedesktop/portal/desktop";
constexpr auto kSettings = "org.freedesktop.portal.Settings";
constexpr auto kNamespace = "org.freedesktop.appearance";
constexpr auto kKey = "color-scheme";
constexpr guint32 kPrefersDark = 1;

using Value = Owned<GVariant, g_variant_unref>;

/// The number in a variant. Read wraps its reply in one variant more than the signal does.
std::optional<guint32> numberIn(Value value) {
  while (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT)) {
    value.reset(g_variant_get_variant(value.get()));
  }
  if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32)) {
    return std::nullopt;
  }
  return g_variant_get_uint32(value.get());
}

/// The portal's setting on one connection to the bus.
class PortalSetting {
 public:
  using Handler = std::function<void(guint32)>;

  PortalSetting(GDBusConnection* connection, Handler told)
      : told_(std::move(told)),
        calls_(connection, kPortal),
        settingChanged_(connection, {kPortal, kPath, kSettings, "SettingChanged"},
                        [this](GVariant* values) { takeChange(values); }),
        watch_(connection, kPortal, [this](bool there) {
          calls_.dropAnswers();
          if (there) {
            ask();
          }
        }) {}

 private:
  void ask() {
    calls_.call({kPath, kSettings, "Read"}, g_variant_new("(ss)", kNamespace, kKey),
                [this](const MethodCalls::Reply& reply) {
                  if (reply.values && g_variant_is_of_type(reply.values, G_VARIANT_TYPE("(v)"))) {
                    take(Value(g_variant_get_child_value(reply.values, 0)));
                  }
                });
  }

  void takeChange(GVariant* values) {
    if (!g_variant_is_of_type(values, G_VARIANT_TYPE("(ssv)"))) {
      return;
    }
    const gchar* space = nullptr;
    const gchar* key = nullptr;
    GVariant* value = nullptr;
    g_variant_get(values, "(&s&s@v)", &space, &key, &value);
    Value owned(value);
    if (std::string_view(space) == kNamespace && std::string_view(key) == kKey) {
      take(std::move(owned));
    }
  }

  void take(Value value) {
    if (const auto number = numberIn(std::move(value))) {
      told_(*number);
    }
  }

  Handler told_;
  MethodCalls calls_;
  SignalSubscription settingChanged_;
  ServiceWatch watch_;
};

class PortalColorScheme : public ColorScheme {
 public:
  explicit PortalColorScheme(std::function<void(bool)> changed) : changed_(std::move(changed)) {}

 private:
  void take(guint32 preference) {
    const bool dark = preference == kPrefersDark;
    if (std::exchange(dark_, dark) != dark) {
      changed_(dark);
    }
  }

  std::function<void(bool)> changed_;
  std::optional<bool> dark_;  ///< as the handler was last told
  std::optional<PortalSetting> setting_;
  BusLink bus_{sessionBusAddress(),
               {[this](GDBusConnection* connection) {
                  setting_.emplace(connection, [this](guint32 preference) { take(preference); });
                },
                [this] { setting_.reset(); }, [](const std::string&) {}}};
};

}  // namespace

std::unique_ptr<ColorScheme> makeColorScheme(std::function<void(bool)> changed) {
  return std::make_unique<PortalColorScheme>(std::move(changed));
}

}  // namespace nivlo
