// Owning pointer for an event source of a GLib loop.
#pragma once

#include <memory>

#include <glib.h>

namespace nivlo {

struct SourceEnd {
  void operator()(GSource* source) const {
    g_source_destroy(source);
    g_source_unref(source);
  }
};

/// Its callback does not run any more once it is gone; to be destroyed on the thread that runs the loop.
using OwnedSource = std::unique_ptr<GSource, SourceEnd>;

}  // namespace nivlo
