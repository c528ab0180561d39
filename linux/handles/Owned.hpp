// Owning pointers for what C libraries hand out.
#pragma once

#include <memory>

namespace nivlo {

template <auto Free>
struct FreedBy {
  template <typename T>
  void operator()(T* object) const {
    Free(object);
  }
};

/// Owned<GError, g_error_free> frees itself.
template <typename T, auto Free>
using Owned = std::unique_ptr<T, FreedBy<Free>>;

}  // namespace nivlo
