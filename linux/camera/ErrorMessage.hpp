// The message of a GLib error.
#pragma once

#include <string>

#include <glib.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Frees the error, which may be null, and returns its message for people.
inline std::string takeMessage(GError* error) {
  const Owned<GError, g_error_free> owned(error);
  return owned ? owned->message : "unknown error";
}

}  // namespace nivlo
