#include "host/control/Controls.hpp"

#include <unistd.h>

#include "host/bundle/BundleLoader.hpp"
#include "host/bundle/InstalledWallpapers.hpp"
#include "kit/MFLog/MFLog.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

void addNumber(GVariantBuilder& to, const char* key, int value) {
  g_variant_builder_add(&to, "{sv}", key, g_variant_new_int32(value));
}

void addDouble(GVariantBuilder& to, const char* key, double value) {
  g_variant_builder_add(&to, "{sv}", key, g_variant_new_double(value));
}

void addFlag(GVariantBuilder& to, const char* key, bool value) {
  g_variant_builder_add(&to, "{sv}", key, g_variant_new_boolean(value));
}

void addText(GVariantBuilder& to, const char* key, const std::string& value) {
  const Owned<gchar, g_free> valid(g_utf8_make_valid(value.c_str(), -1));
  g_variant_builder_add(&to, "{sv}", key, g_variant_new_string(valid.get()));
}

GVariant* describe(const CameraInfo& camera, CameraState state) {
  GVariantBuilder entries;
  g_variant_builder_init(&entries, G_VARIANT_TYPE_VARDICT);
  addText(entries, "id", camera.uniqueID);
  addText(entries, "name", camera.localizedName);
  addText(entries, "position", sideInWords(camera.position));
  addText(entries, "state", inWords(state));
  return g_variant_builder_end(&entries);
}

GVariant* describe(const WallpaperShow& show) {
  const auto status = show.status();
  GVariantBuilder entries;
  g_variant_builder_init(&entries, G_VARIANT_TYPE_VARDICT);
  addNumber(entries, "process", getpid());
  addText(entries, "wallpaper", show.bundle().name());
  addText(entries, "bundle", show.bundle().path().string());
  addNumber(entries, "preset", status.preset);
  addNumber(entries, "presets", static_cast<int>(show.bundle().presets().size()));
  addFlag(entries, "takesCamera", status.takesCamera);
  if (status.scanning) {
    addFlag(entries, "scanning", *status.scanning);
    addFlag(entries, "canScan", status.canScan);
  }
  addFlag(entries, "animating", status.animating);
  addFlag(entries, "visible", status.visible);
  if (!status.awaited.empty()) {
    addText(entries, "awaited", status.awaited);
  }
  addFlag(entries, "paused", status.paused);
  addFlag(entries, "foreground", status.inForeground);
  if (status.batterySaving != BatterySaving::None) {
    addText(entries, "battery", status.batterySaving == BatterySaving::Paused ? "paused" : "slowed");
  }
  addNumber(entries, "frames", static_cast<int>(status.frames.frames()));
  addDouble(entries, "ageMedian", status.frames.age(0.5));
  addDouble(entries, "age95", status.frames.age(0.95));
  if (status.camera) {
    g_variant_builder_add(&entries, "{sv}", "camera", describe(*status.camera, status.cameraState));
  }
  return g_variant_builder_end(&entries);
}

struct Changes {
  std::string wallpaper;  ///< a name or a path; empty: the shown one
  ShowOptions options;
};

Changes changesFrom(GVariant* dictionary) {
  Changes changes;
  const gchar* wallpaper = nullptr;
  if (g_variant_lookup(dictionary, "wallpaper", "&s", &wallpaper)) {
    changes.wallpaper = wallpaper;
  }
  gint32 preset = 0;
  if (g_variant_lookup(dictionary, "preset", "i", &preset)) {
    changes.options.preset = preset;
  }
  gboolean scans = FALSE;
  if (g_variant_lookup(dictionary, "scanning", "b", &scans)) {
    changes.options.scans = scans != FALSE;
  }
  const gchar* camera = nullptr;
  if (g_variant_lookup(dictionary, "camera", "&s", &camera)) {
    changes.options.camera = camera;
  }
  return changes;
}

Changes changesOf(std::string_view method, GVariant* arguments) {
  const Owned<GVariant, g_variant_unref> first(g_variant_get_child_value(arguments, 0));
  if (method == "SetPreset") {
    return {.options = {.preset = g_variant_get_int32(first.get())}};
  }
  if (method == "SetScanning") {
    return {.options = {.scans = g_variant_get_boolean(first.get()) != FALSE}};
  }
  if (method == "SetWallpaper") {
    const Owned<GVariant, g_variant_unref> preset(g_variant_get_child_value(arguments, 1));
    return {.wallpaper = g_variant_get_string(first.get(), nullptr),
            .options = {.preset = g_variant_get_int32(preset.get())}};
  }
  return changesFrom(first.get());
}

}  // namespace

Controls::Answer Controls::call(std::string_view method, GVariant* arguments) {
  if (!show_) {
    return {.error = kNotShowing};
  }
  if (method == "GetStatus") {
    return {.values = g_variant_new("(@a{sv})", describe(*show_))};
  }
  return {.error = perform(method, arguments)};
}

std::string Controls::perform(std::string_view method, GVariant* arguments) {
  if (method == "Quit") {
    quit_();
  } else if (method == "Pause" || method == "Resume") {
    show_->presence().setPaused(method == "Pause");
  } else if (method == "Swap") {
    return show_->swapCameras();
  } else {
    const auto changes = changesOf(method, arguments);
    return changes.wallpaper.empty() ? show_->change(changes.options)
                                     : showWallpaper(changes.wallpaper, changes.options);
  }
  return "";
}

std::string Controls::showWallpaper(const std::string& nameOrPath, const ShowOptions& options) {
  std::string error;
  const auto path = findBundle(nameOrPath, &error);
  if (path == show_->bundle().path()) {
    return show_->change(options);
  }
  const auto bundle = error.empty() ? openWallpaperBundle(path, &error) : nullptr;
  if (bundle) {
    error = show_->replace(bundle, options);
  }
  if (error.empty()) {
    MFNotice("wallpaper: %@, preset %d", bundle->identifier(), show_->status().preset);
  }
  return error;
}

}  // namespace nivlo
