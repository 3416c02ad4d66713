#pragma once
#include <gio/gio.h>

#include <memory>
#include <string>

// Owners for what GLib counts references of.
namespace nimbletype {

template <auto Release>
struct GlibRelease {
  template <typename T>
  void operator()(T* p) const {
    Release(p);
  }
};

template <typename T>
using GObjectPtr = std::unique_ptr<T, GlibRelease<g_object_unref>>;
using VariantPtr = std::unique_ptr<GVariant, GlibRelease<g_variant_unref>>;
using MainContextPtr = std::unique_ptr<GMainContext, GlibRelease<g_main_context_unref>>;

// The child of a tuple or array; none when it is not there.
inline VariantPtr childOf(GVariant* v, gsize index) {
  if (!v || !g_variant_is_container(v) || index >= g_variant_n_children(v)) return nullptr;
  return VariantPtr(g_variant_get_child_value(v, index));
}

inline std::string stringOf(GVariant* v) {
  const bool isText = v && (g_variant_is_of_type(v, G_VARIANT_TYPE_STRING) ||
                            g_variant_is_of_type(v, G_VARIANT_TYPE_OBJECT_PATH));
  return isText ? g_variant_get_string(v, nullptr) : "";
}

}  // namespace nimbletype
