#include "host/control/client/StatusText.hpp"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "host/text/VisibleText.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

using Json = nlohmann::ordered_json;

Json asJson(GVariant* value);

Json objectFrom(GVariant* dictionary) {
  auto result = Json::object();
  GVariantIter entries;
  g_variant_iter_init(&entries, dictionary);
  const gchar* key = nullptr;
  GVariant* value = nullptr;
  while (g_variant_iter_loop(&entries, "{&sv}", &key, &value)) {
    result[key] = asJson(value);
  }
  return result;
}

/// Converts the types that GetStatus has; any other becomes null.
Json asJson(GVariant* value) {
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_VARDICT)) {
    return objectFrom(value);
  }
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN)) {
    return g_variant_get_boolean(value) != FALSE;
  }
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_DOUBLE)) {
    return g_variant_get_double(value);
  }
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_INT32)) {
    return g_variant_get_int32(value);
  }
  return g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ? Json(g_variant_get_string(value, nullptr))
                                                            : Json();
}

// A value that is absent, or of another type than it should have, counts as the given one, "" or 0.

bool flag(const Json& values, const char* key, bool otherwise) {
  const auto found = values.find(key);
  return found != values.end() && found->is_boolean() ? found->get<bool>() : otherwise;
}

std::string text(const Json& values, const char* key) {
  const auto found = values.find(key);
  return found != values.end() && found->is_string() ? found->get<std::string>() : "";
}

template <typename Number>
Number number(const Json& values, const char* key) {
  const auto found = values.find(key);
  return found != values.end() && found->is_number() ? found->get<Number>() : 0;
}

std::string whyNotShown(const Json& status) {
  if (flag(status, "paused", false)) {
    return "paused; continue with 'nivlo ctl resume'";
  }
  if (text(status, "battery") == "paused") {
    return "paused while the machine runs on its battery, as --on-battery says";
  }
  if (!flag(status, "foreground", true)) {
    return "in the background: the session is locked, asleep or not on the screen";
  }
  if (const auto awaited = text(status, "awaited"); !awaited.empty()) {
    return visibleText(fmt::format("waiting for {}", awaited));
  }
  return flag(status, "visible", true) ? "about to be shown" : "hidden by other windows";
}

std::string howShown(const Json& status) {
  return text(status, "battery") == "slowed" ? "shown, slowed while the machine runs on its battery"
                                             : "shown";
}

std::string whyNoPicture(const std::string& state) {
  if (state == "unplugged") {
    return ": unplugged; its picture returns when it is plugged in again";
  }
  return state == "waiting" ? ": no picture arrives; if it stays so, the log says why" : "";
}

std::string cameraInWords(const Json& status) {
  if (const auto camera = status.find("camera"); camera != status.end()) {
    return visibleText(fmt::format("{} ({}, {}){}", text(*camera, "name"), text(*camera, "id"),
                                   text(*camera, "position"), whyNoPicture(text(*camera, "state"))));
  }
  if (!flag(status, "takesCamera", true)) {
    return "none in use";
  }
  return flag(status, "animating", false) ? "off: there is none, or it could not be opened (see the log)"
                                          : "off while the wallpaper is not shown";
}

std::string scanningInWords(const Json& status) {
  const auto scanning = status.find("scanning");
  if (scanning == status.end()) {
    return "this wallpaper does not read codes";
  }
  if (!flag(status, "scanning", false)) {
    return "off";
  }
  if (!flag(status, "canScan", true)) {
    return "not possible: the program that reads codes cannot run (see the log)";
  }
  if (!flag(status, "animating", false)) {
    return "on, but not while the wallpaper is not shown";
  }
  const auto camera = status.find("camera");
  const bool hasPicture = camera != status.end() && text(*camera, "state") == "delivering";
  return hasPicture ? "on" : "on, but there is no picture";
}

/// The age of pictures counts from the camera, so a wallpaper without one has none.
std::string picturesInWords(const Json& status) {
  auto words = std::to_string(number<int>(status, "frames"));
  if (status.contains("camera") || flag(status, "takesCamera", true)) {
    words += fmt::format(", {:.1f} ms behind the camera (95 % within {:.1f})",
                         number<double>(status, "ageMedian"), number<double>(status, "age95"));
  }
  return words;
}

}  // namespace

std::string statusAsJson(GVariant* status) {
  auto result = objectFrom(status);
  result.emplace("camera", nullptr);
  return result.dump(2);
}

std::string statusInWords(GVariant* status) {
  const auto values = objectFrom(status);
  return fmt::format(
      "wallpaper  {}, {}\n"
      "preset     {} of {}\n"
      "camera     {}\n"
      "scanning   {}\n"
      "pictures   {}\n"
      "process    {}",
      visibleText(text(values, "wallpaper")),
      flag(values, "animating", false) ? howShown(values) : whyNotShown(values),
      number<int>(values, "preset"), number<int>(values, "presets"), cameraInWords(values),
      scanningInWords(values), picturesInWords(values), number<int>(values, "process"));
}

}  // namespace nivlo
