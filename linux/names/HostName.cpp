#include "linux/names/HostName.hpp"

#include <algorithm>

#include <glib.h>
#include <idn2.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

std::optional<std::string> asciiHostName(std::string_view host) {
  const std::string name(host);
  const Owned<char, g_free> resolved(g_uri_unescape_string(name.c_str(), nullptr));
  const std::string_view plain(resolved ? resolved.get() : name.c_str());
  if (std::ranges::all_of(plain, [](char c) { return (c & 0x80) == 0; })) {
    return name;
  }
  char* raw = nullptr;
  if (idn2_to_ascii_8z(plain.data(), &raw, IDN2_NFC_INPUT | IDN2_NONTRANSITIONAL) != IDN2_OK) {
    return std::nullopt;
  }
  const Owned<char, idn2_free> ascii(raw);
  return ascii.get();
}

}  // namespace nivlo
