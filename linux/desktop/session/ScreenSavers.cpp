#include "linux/desktop/session/ScreenSavers.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {

namespace {

/// The path of a service's object: "/org/example/ScreenSaver" for "org.example.ScreenSaver".
std::string pathOf(const std::string& name) {
  auto path = "/" + name;
  std::replace(path.begin(), path.end(), '.', '/');
  return path;
}

}  // namespace

ScreenSavers::ScreenSavers(GDBusConnection* connection, BackgroundReasons& reasons) {
  for (const char* desktop : {"freedesktop", "gnome", "mate", "cinnamon"}) {
    savers_.emplace_back(connection, reasons, std::string("org.") + desktop + ".ScreenSaver");
  }
}

// Accepts the signal from any path, because some desktops send it from a second one.
ScreenSavers::Saver::Saver(GDBusConnection* connection, BackgroundReasons& reasons, std::string name)
    : reasons_(reasons),
      name_(std::move(name)),
      calls_(connection, name_),
      activeChanged_(connection, {name_.c_str(), nullptr, name_.c_str(), "ActiveChanged"},
                     [this](GVariant* values) { takeState(values); }),
      watch_(connection, name_, [this](bool there) { changed(there); }) {}

void ScreenSavers::Saver::changed(bool there) {
  calls_.dropAnswers();
  if (!there) {
    reasons_.set(name_, false);
    return;
  }
  calls_.call({pathOf(name_).c_str(), name_.c_str(), "GetActive"}, nullptr,
              [this](const MethodCalls::Reply& reply) {
                if (reply.values) {
                  takeState(reply.values);
                }
              });
}

void ScreenSavers::Saver::takeState(GVariant* values) {
  if (g_variant_is_of_type(values, G_VARIANT_TYPE("(b)"))) {
    gboolean active = FALSE;
    g_variant_get(values, "(b)", &active);
    reasons_.set(name_, active);
  }
}

}  // namespace nivlo
