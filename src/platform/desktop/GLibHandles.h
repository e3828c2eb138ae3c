#pragma once

#include <gio/gio.h>

#include <memory>

/// RAII wrappers for GLib objects.
namespace kavendra {

struct GObjectRelease {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using GObjectHandle = std::unique_ptr<T, GObjectRelease>;

struct GMemoryRelease {
    void operator()(gpointer memory) const { g_free(memory); }
};
using GText = std::unique_ptr<char, GMemoryRelease>;

struct GVariantRelease {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using GVariantHandle = std::unique_ptr<GVariant, GVariantRelease>;

} // namespace kavendra
