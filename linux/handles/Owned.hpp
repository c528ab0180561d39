// Owning pointers to the objects of C libraries.
#pragma once

#include <memory>

namespace nivlo {

/// The deleter of Owned: calls `Free`, whose return value is ignored.
template <auto Free>
struct FreedBy {
  template <typename T>
  void operator()(T* object) const {
    Free(object);
  }
};

/// A std::unique_ptr that ends its object with the C library's own function, for example
/// Owned<GError, g_error_free>. It is as large as a plain pointer, and `Free` is never called with null.
/// Constructing one takes over a reference and adds none: what a library only lends must be referenced first.
/// `Free` can be any function that accepts a T*, so g_object_unref, which takes void*, serves every GObject.
/// An opaque handle that a library declares as void* is an Owned<void, Free>.
template <typename T, auto Free>
using Owned = std::unique_ptr<T, FreedBy<Free>>;

}  // namespace nivlo
