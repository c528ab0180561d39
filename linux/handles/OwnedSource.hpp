// Owning pointer to an event source of a GLib main loop.
#pragma once

#include <glib.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Takes the source out of its loop, if it is in one, and gives up a reference to it.
inline void endSource(GSource* source) {
  g_source_destroy(source);
  g_source_unref(source);
}

/// A source that leaves its loop with its owner; dropping the last reference alone would leave it running.
/// Destroy it on the thread that runs the loop: its callback is then never called again. On another thread a
/// callback that has already begun may still be running. A callback may destroy the source that called it.
using OwnedSource = Owned<GSource, endSource>;

}  // namespace nivlo
