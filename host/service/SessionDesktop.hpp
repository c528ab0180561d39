// The way in which the desktop of this session starts programs.
#pragma once

#include <string>

#include "host/service/ConfiguredDesktops.hpp"

namespace nivlo {

struct SessionDesktop {
  enum class Starts {
    AutostartEntries,    ///< it runs the entries of the autostart folder
    ConfigurationLines,  ///< only what its own configuration names; `configured` says where and how
    Unknown,             ///< nobody can tell from the environment
  };
  std::string name;  ///< the desktop's own name; empty if the environment does not tell
  Starts starts = Starts::Unknown;
  const ConfiguredDesktop* configured = nullptr;  ///< set for ConfigurationLines only
};

/// Reads the environment: the variables that name the desktop, then those by which compositors tell where
/// their sockets are.
SessionDesktop sessionDesktop();

}  // namespace nivlo
