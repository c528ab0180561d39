#include "host/control/client/HandOver.hpp"

#include <algorithm>
#include <iostream>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "host/control/client/ControlClient.hpp"

namespace nivlo {

namespace {

GVariant* changesFor(const ShowOptions& wishes) {
  GVariantBuilder entries;
  g_variant_builder_init(&entries, G_VARIANT_TYPE_VARDICT);
  if (wishes.preset) {
    g_variant_builder_add(&entries, "{sv}", "preset", g_variant_new_int32(*wishes.preset));
  }
  if (wishes.scans) {
    g_variant_builder_add(&entries, "{sv}", "scanning", g_variant_new_boolean(*wishes.scans));
  }
  if (wishes.camera) {
    g_variant_builder_add(&entries, "{sv}", "camera", g_variant_new_string(wishes.camera->c_str()));
  }
  return g_variant_new("(@a{sv})", g_variant_builder_end(&entries));
}

std::string wishesInWords(const ShowOptions& wishes) {
  std::vector<std::string> parts;
  if (wishes.preset) {
    parts.push_back(fmt::format("shows preset {}", *wishes.preset));
  }
  if (wishes.scans) {
    parts.emplace_back(*wishes.scans ? "offers codes" : "leaves codes alone");
  }
  if (wishes.camera) {
    parts.push_back(fmt::format("uses the {} camera", *wishes.camera));
  }
  return parts.empty() ? "" : fmt::format("; it now {}", fmt::join(parts, ", "));
}

std::vector<std::string> leftOut(std::vector<std::string> given) {
  std::erase_if(given, [](const std::string& option) {
    return option.starts_with("--preset=") || option.starts_with("--qr=") || option.starts_with("--camera=");
  });
  return given;
}

}  // namespace

int handOver(const ShowOptions& wishes, const std::vector<std::string>& given) {
  const ControlClient running;
  const auto changed = running.call("Change", changesFor(wishes));
  const auto status = running.call("GetStatus");
  if (!changed.error.empty() || !status.error.empty()) {
    std::cerr << fmt::format("nivlo: another nivlo runs in this session, but: {}\n",
                             changed.error.empty() ? status.error : changed.error);
    return 1;
  }
  std::cout << fmt::format("nivlo is already running (process {}){}\n", status.number("process"),
                           wishesInWords(wishes));
  if (const auto others = leftOut(given); !others.empty()) {
    std::cout << fmt::format("Only a new start takes {}: 'nivlo ctl quit' first\n", fmt::join(others, " "));
  }
  return 0;
}

}  // namespace nivlo
