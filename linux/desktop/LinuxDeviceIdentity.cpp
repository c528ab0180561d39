#include "linux/desktop/LinuxDeviceIdentity.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

#include <glib.h>
#include <sys/utsname.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

namespace fs = std::filesystem;

/// The first line of a file, trimmed. Texts in the device tree end in a NUL byte, which is cut off too.
std::string firstLine(const fs::path& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  line.erase(std::min(line.size(), line.find('\0')));
  constexpr auto blanks = " \t\r";
  line.erase(0, std::min(line.size(), line.find_first_not_of(blanks)));
  line.erase(line.find_last_not_of(blanks) + 1);
  return line;
}

/// Returns whether the text is one that board makers leave in the firmware when nobody fills it in.
bool isPlaceholder(std::string_view text) {
  constexpr std::string_view placeholders[] = {"",
                                               "Default string",
                                               "Not Applicable",
                                               "Not Specified",
                                               "None",
                                               "System Product Name",
                                               "System manufacturer",
                                               "To Be Filled By O.E.M.",
                                               "To be filled by O.E.M.",
                                               "Unknown",
                                               "O.E.M."};
  return std::ranges::find(placeholders, text) != std::end(placeholders);
}

std::string firmwareModel(const fs::path& root) {
  const auto dmi = root / "sys/class/dmi/id";
  const auto product = firstLine(dmi / "product_name");
  const auto vendor = firstLine(dmi / "sys_vendor");
  if (isPlaceholder(product)) {
    return {};
  }
  return isPlaceholder(vendor) || product.starts_with(vendor) ? product : vendor + " " + product;
}

std::string readModel(const fs::path& root) {
  if (auto model = firstLine(root / "proc/device-tree/model"); !model.empty()) {
    return model;
  }
  auto model = firmwareModel(root);
  return model.empty() ? "Linux" : model;
}

/// The value of the first line KEY=VALUE in a file with shell quoting; empty when there is none.
std::string assignedValue(const fs::path& file, const std::string& key) {
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    if (!line.starts_with(key + "=")) {
      continue;
    }
    const Owned<char, g_free> value(g_shell_unquote(line.c_str() + key.size() + 1, nullptr));
    return value ? value.get() : std::string();
  }
  return {};
}

std::string readSystemVersion(const fs::path& root) {
  for (const auto* file : {"etc/os-release", "usr/lib/os-release"}) {
    for (const auto* key : {"VERSION_ID", "PRETTY_NAME"}) {
      if (auto version = assignedValue(root / file, key); !version.empty()) {
        return version;
      }
    }
  }
  return {};
}

class LinuxDeviceIdentity : public DeviceIdentity {
 public:
  LinuxDeviceIdentity(std::string machineOverride, const fs::path& root)
      : machine_(std::move(machineOverride)),
        model_(readModel(root)),
        systemVersion_(readSystemVersion(root)) {
    utsname kernel{};
    uname(&kernel);
    if (machine_.empty()) {
      machine_ = kernel.machine;
    }
    if (systemVersion_.empty()) {
      systemVersion_ = kernel.release;
    }
  }

  std::string machine() const override { return machine_; }
  std::string model() const override { return model_; }
  std::string systemVersion() const override { return systemVersion_; }

 private:
  std::string machine_, model_, systemVersion_;
};

}  // namespace

std::unique_ptr<DeviceIdentity> makeLinuxDeviceIdentity(std::string machineOverride, const fs::path& root) {
  return std::make_unique<LinuxDeviceIdentity>(std::move(machineOverride), root);
}

}  // namespace nivlo
