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

std::string whyNotShown(const Json& status) {
  if (status.value("paused", false)) {
    return "paused; continue with 'nivlo ctl resume'";
  }
  if (status.value("battery", "") == "paused") {
    return "paused while the machine runs on its battery, as --on-battery says";
  }
  if (!status.value("foreground", true)) {
    return "in the background: the session is locked, asleep or not on the screen";
  }
  if (const auto awaited = status.value("awaited", ""); !awaited.empty()) {
    return visibleText(fmt::format("waiting for {}", awaited));
  }
  return status.value("visible", true) ? "about to be shown" : "hidden by other windows";
}

std::string howShown(const Json& status) {
  return status.value("battery", "") == "slowed" ? "shown, slowed while the machine runs on its battery"
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
    return visibleText(fmt::format("{} ({}, {}){}", camera->value("name", ""), camera->value("id", ""),
                                   camera->value("position", ""), whyNoPicture(camera->value("state", ""))));
  }
  return status.value("animating", false) ? "off: there is none, or it could not be opened (see the log)"
                                          : "off while the wallpaper is not shown";
}

std::string scanningInWords(const Json& status) {
  const auto scanning = status.find("scanning");
  if (scanning == status.end()) {
    return "this wallpaper does not read codes";
  }
  if (!scanning->get<bool>()) {
    return "off";
  }
  if (!status.value("canScan", true)) {
    return "not possible: the program that reads codes cannot run (see the log)";
  }
  if (!status.value("animating", false)) {
    return "on, but not while the wallpaper is not shown";
  }
  const auto camera = status.find("camera");
  const bool hasPicture = camera != status.end() && camera->value("state", "") == "delivering";
  return hasPicture ? "on" : "on, but there is no picture";
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
      "pictures   {}, {:.1f} ms behind the camera (95 % within {:.1f})\n"
      "process    {}",
      visibleText(values.value("wallpaper", "")),
      values.value("animating", false) ? howShown(values) : whyNotShown(values), values.value("preset", 0),
      values.value("presets", 0), cameraInWords(values), scanningInWords(values), values.value("frames", 0),
      values.value("ageMedian", 0.0), values.value("age95", 0.0), values.value("process", 0));
}

}  // namespace nivlo
