#include "host/control/ControlProperties.hpp"

namespace nivlo {

namespace {

GVariant* text(const std::string& value) {
  const Owned<gchar, g_free> valid(g_utf8_make_valid(value.c_str(), -1));
  return g_variant_new_string(valid.get());
}

const char* stateOf(const WallpaperStatus& status) {
  if (status.animating) {
    return "shown";
  }
  if (status.paused) {
    return "paused";
  }
  if (status.batterySaving == BatterySaving::Paused) {
    return "battery";
  }
  if (!status.inForeground) {
    return "background";
  }
  if (!status.awaited.empty()) {
    return "awaiting";
  }
  return status.visible ? "starting" : "hidden";
}

const char* scanningOf(const WallpaperStatus& status) {
  if (!status.scanning) {
    return "unsupported";
  }
  if (!*status.scanning) {
    return "off";
  }
  if (!status.canScan) {
    return "impossible";
  }
  const bool hasPicture = status.camera && status.cameraState == CameraState::Delivering;
  return status.animating && hasPicture ? "on" : "idle";
}

const char* cameraStateOf(const WallpaperStatus& status) {
  if (status.camera) {
    return inWords(status.cameraState);
  }
  if (!status.takesCamera) {
    return "none";
  }
  return status.animating ? "unavailable" : "off";
}

}  // namespace

PropertyValues propertiesOf(const WallpaperShow& show) {
  const auto status = show.status();
  PropertyValues values;
  const auto add = [&](const char* name, GVariant* value) {
    values.emplace(name, Owned<GVariant, g_variant_unref>(g_variant_ref_sink(value)));
  };
  add("Wallpaper", text(show.bundle().name()));
  add("Bundle", text(show.bundle().path().string()));
  add("Preset", g_variant_new_int32(status.preset));
  add("Presets", g_variant_new_int32(static_cast<int>(show.bundle().presets().size())));
  add("State", text(stateOf(status)));
  add("Awaited", text(status.awaited));
  add("Paused", g_variant_new_boolean(status.paused));
  add("Slowed", g_variant_new_boolean(status.batterySaving == BatterySaving::Slowed));
  add("Scanning", text(scanningOf(status)));
  add("CameraState", text(cameraStateOf(status)));
  const auto camera = status.camera.value_or(CameraInfo());
  add("Camera", text(camera.uniqueID));
  add("CameraName", text(camera.localizedName));
  add("CameraPosition", text(status.camera ? sideInWords(camera.position) : ""));
  return values;
}

}  // namespace nivlo
