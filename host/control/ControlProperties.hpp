// The properties of the D-Bus interface.
#pragma once

#include <map>
#include <string>

#include <glib.h>

#include "host/show/WallpaperShow.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

using PropertyValues = std::map<std::string, Owned<GVariant, g_variant_unref>>;

/// Returns the values of all properties that kControlDescription lists, by their names. Main thread only.
PropertyValues propertiesOf(const WallpaperShow& show);

}  // namespace nivlo
